"""The network: characters to tokens, tokens in context, and what they say together."""

import torch
from torch import nn
from torch.nn import functional as F

from phrases import AMOUNTS, KINDS, MINUTES, SHIFTS
from tokens import CHARACTER_COUNT, FLAG_COUNT, LEXICON_COUNT, VALUE_COUNT

CHARACTER_WIDTH, FILTERS, VALUE_WIDTH, LEXICON_WIDTH, WIDTH = 16, 48, 16, 16, 112
DILATIONS = (1, 1, 2, 1)
ROLE_COUNT = 11
HEADS = {
    "kind": len(KINDS),
    "amount": len(AMOUNTS),
    "month": 13,
    "day": 32,
    "hour": 25,
    "minute": len(MINUTES),
    "shift": len(SHIFTS),
}


class Net(nn.Module):
    def __init__(self, width=WIDTH):
        super().__init__()
        self.characters = nn.Embedding(CHARACTER_COUNT, CHARACTER_WIDTH, padding_idx=0)
        self.filters = nn.Conv1d(CHARACTER_WIDTH, FILTERS, 3, padding=1)
        self.values = nn.Embedding(VALUE_COUNT, VALUE_WIDTH)
        self.lexicon = nn.Embedding(LEXICON_COUNT, LEXICON_WIDTH)
        self.token = nn.Linear(FILTERS + VALUE_WIDTH + LEXICON_WIDTH + FLAG_COUNT, width)
        self.context = nn.ModuleList(nn.Conv1d(width, width, 3, padding=d, dilation=d) for d in DILATIONS)
        self.roles = nn.Linear(width, ROLE_COUNT)
        self.attention = nn.Linear(width, len(HEADS))
        self.heads = nn.ModuleDict({name: nn.Linear(width, count) for name, count in HEADS.items()})
        self.dropout = nn.Dropout(0.08)

    def forward(self, words, word_ids, flags, mask):
        """words: (characters, value, lexicon) of the distinct words; word_ids, mask: texts x tokens; flags: x FLAG_COUNT."""
        characters, values, lexicon = words
        seen = F.relu(self.filters(self.characters(characters).transpose(1, 2)))
        # Places behind a word's last character do not count.
        there = (characters != 0).unsqueeze(1)
        seen = seen.masked_fill(~there, 0).max(dim=2).values
        table = torch.cat([seen, self.values(values), self.lexicon(lexicon)], dim=1)
        x = torch.cat([table[word_ids], flags], dim=2)
        m = mask.unsqueeze(1).float()
        x = F.relu(self.token(x)).transpose(1, 2) * m
        for layer in self.context:
            x = (x + F.relu(layer(self.dropout(x)))) * m
        x = x.transpose(1, 2)
        roles = self.roles(x)
        scores = self.attention(x).masked_fill(~mask.unsqueeze(2), float("-inf"))
        weights = torch.softmax(scores, dim=1)
        pooled = torch.einsum("btk,btw->bkw", weights, x)
        return roles, {name: head(pooled[:, i]) for i, (name, head) in enumerate(self.heads.items())}


if __name__ == "__main__":
    print(sum(p.numel() for p in Net().parameters()))
