"""Trains the network.

usage: train.py --seed N --out FILE [--from FILE] TEXTS...

From a network that is trained already it goes on, once and gently: for texts that the grammar has learnt since.
"""

import argparse
import math
import pickle
import time

import numpy as np
import torch
from torch.nn import functional as F

from dataset import IGNORED, Dataset
from net import HEADS, Net

EPOCHS, BATCH, RATE, WARM_UP = 2, 192, 2.5e-3, 400


def batches(data, rng):
    """The texts in another order each time, those of about one length together."""
    order = rng.permutation(len(data))
    lengths = np.array([len(ids) for ids in data.ids])
    found = []
    for chunk in np.array_split(order, max(1, len(order) // (BATCH * 50))):
        chunk = chunk[np.argsort(lengths[chunk], kind="stable")]
        found += [chunk[i : i + BATCH] for i in range(0, len(chunk) - BATCH + 1, BATCH)]
    rng.shuffle(found)
    return found


def loss_of(net, words, ids, flags, mask, roles, labels):
    role_scores, heads = net(words, ids, flags, mask)
    loss = 3 * F.cross_entropy(role_scores.reshape(-1, role_scores.shape[2]), roles.reshape(-1), ignore_index=IGNORED)
    for i, name in enumerate(HEADS):
        known = labels[:, i] != IGNORED
        if known.any():
            # What few texts speak of still counts.
            weight = 0.3 + 0.7 * known.float().mean()
            loss = loss + weight * F.cross_entropy(heads[name], labels[:, i], ignore_index=IGNORED)
    return loss


def main(files, out, seed, trained):
    torch.set_num_threads(1)
    torch.manual_seed(seed)
    data = Dataset()
    for file in files:
        with open(file, "rb") as texts:
            for text, roles, meaning in pickle.load(texts):
                data.add(text, roles, meaning)
    data.finish()
    print(f"{len(data)} texts of {len(data.word_index)} words", flush=True)

    net = Net()
    epochs, highest = EPOCHS, RATE
    if trained:
        net.load_state_dict(torch.load(trained))
        epochs, highest = 1, RATE / 2
    optimizer = torch.optim.AdamW(net.parameters(), lr=highest, weight_decay=0.01, betas=(0.9, 0.98))
    rng = np.random.default_rng(seed)
    steps = epochs * (len(data) // BATCH)
    step, losses, start = 0, [], time.time()
    for _ in range(epochs):
        for indices in batches(data, rng):
            rate = highest * min(1, (step + 1) / WARM_UP)
            rate *= 0.02 + 0.98 * 0.5 * (1 + math.cos(math.pi * min(1, step / steps)))
            for group in optimizer.param_groups:
                group["lr"] = rate
            loss = loss_of(net, *data.batch(indices))
            optimizer.zero_grad()
            loss.backward()
            torch.nn.utils.clip_grad_norm_(net.parameters(), 1.0)
            optimizer.step()
            losses.append(loss.item())
            step += 1
            if step % 500 == 0:
                print(
                    f"step {step} of {steps}, loss {np.mean(losses[-500:]):.4f}, {time.time() - start:.0f} s",
                    flush=True,
                )
                torch.save(net.state_dict(), out)
    torch.save(net.state_dict(), out)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--out", required=True)
    parser.add_argument("--from", dest="trained")
    parser.add_argument("texts", nargs="+")
    given = parser.parse_args()
    main(given.texts, given.out, given.seed, given.trained)
