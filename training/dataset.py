"""Examples as arrays."""

import numpy as np
import torch

from generate import ROLES
from phrases import AMOUNTS, KINDS, MINUTES, SHIFTED, SHIFTS
from tokens import FLAG_COUNT, features, tokenize

KIND_INDEX = {kind: i for i, kind in enumerate(KINDS)}
AMOUNT_INDEX = {amount: i for i, amount in enumerate(AMOUNTS)}
IGNORED = -100
COUNTED = ("IN_", "WEEKS_FROM_TOMORROW", "WEEK_AFTER_", "NTH_")
DATED = {"SPECIFIC_DATE", "NEXT_MONTH_DAY", "THIS_MONTH_DAY"}


class Dataset:
    def __init__(self):
        self.words, self.word_index = [], {}
        self.ids, self.flags, self.roles, self.labels = [], [], [], []

    def add(self, text, roles, meaning):
        tokens = tokenize(text)
        ids = []
        rows = features(text, tokens)
        for token, row in zip(tokens, rows):
            i = self.word_index.get(token.text)
            if i is None:
                i = self.word_index[token.text] = len(self.words)
                self.words.append((row[0], row[1], row[2]))
            ids.append(i)
        self.ids.append(np.array(ids, np.int32))
        self.flags.append(np.array([row[3] for row in rows], np.uint8).reshape(-1, FLAG_COUNT))
        self.roles.append(np.array([ROLES.index(role) for role in roles], np.int8))
        m, none = meaning, meaning.kind == "NONE"
        digits = set(roles)
        counted = m.kind.startswith(COUNTED) or m.shift != "NONE"
        self.labels.append(
            [
                KIND_INDEX[m.kind],
                AMOUNT_INDEX[m.amount] if counted and m.amount is not None else IGNORED,
                (m.month or 0) if m.kind.startswith(("SPECIFIC_DATE", "NTH_")) else IGNORED,
                (m.day or 0) if m.kind in DATED else IGNORED,
                IGNORED if none or m.kind in ("IN_MINUTES", "IN_HOURS") else 24 if m.hour is None else m.hour,
                MINUTES.index(m.minute)
                if m.hour is not None and m.minute in MINUTES and not digits & {"M", "T"}
                else IGNORED,
                SHIFTS.index(m.shift) if m.kind in SHIFTED else IGNORED,
            ]
        )

    def finish(self):
        self.words = (
            torch.tensor([w[0] for w in self.words]),
            torch.tensor([w[1] for w in self.words]),
            torch.tensor([w[2] for w in self.words]),
        )
        self.labels = torch.tensor(self.labels)
        return self

    def __len__(self):
        return len(self.ids)

    def batch(self, indices):
        longest = max(len(self.ids[i]) for i in indices)
        ids = np.zeros((len(indices), longest), np.int64)
        flags = np.zeros((len(indices), longest, FLAG_COUNT), np.float32)
        roles = np.full((len(indices), longest), IGNORED, np.int64)
        mask = np.zeros((len(indices), longest), bool)
        for row, i in enumerate(indices):
            n = len(self.ids[i])
            ids[row, :n], flags[row, :n], roles[row, :n], mask[row, :n] = (
                self.ids[i],
                self.flags[i],
                self.roles[i],
                True,
            )
        distinct, inverse = np.unique(ids, return_inverse=True)
        distinct = torch.from_numpy(distinct)
        words = tuple(part[distinct] for part in self.words)
        return (
            words,
            torch.from_numpy(inverse.reshape(ids.shape)),
            torch.from_numpy(flags),
            torch.from_numpy(mask),
            torch.from_numpy(roles),
            self.labels[indices],
        )
