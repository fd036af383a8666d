"""Writes the weights as the program reads them (src/classifier/Weights.h says how)."""

import struct
import sys

import torch

from net import DILATIONS, HEADS
from phrases import AMOUNTS, KINDS, MINUTES
from tokens import CHARACTERS, CUT, LEXICON


def fnv(data):
    h = 0xCBF29CE484222325
    for i in range(0, len(data) - len(data) % 8 + 8, 8):
        h = ((h ^ int.from_bytes(data[i : i + 8], "little")) * 0x100000001B3) & 0xFFFFFFFFFFFFFFFF
    return h


def matrix(tensor):
    tensor = tensor.detach().half()
    rows, columns = tensor.shape
    return struct.pack("<II", rows, columns) + tensor.contiguous().numpy().astype("<f2").tobytes()


def layer(weight, bias):
    """weight: outputs x inputs, or outputs x inputs x taps."""
    if weight.dim() == 3:
        weight = weight.permute(2, 1, 0).reshape(-1, weight.shape[0])
    else:
        weight = weight.t()
    return matrix(weight) + matrix(bias.unsqueeze(0))


def write(state, file):
    vocabulary = "\n".join(
        [
            CHARACTERS,
            " ".join(LEXICON.words),
            " ".join(KINDS),
            " ".join(map(str, AMOUNTS)),
            " ".join(map(str, MINUTES)),
            " ".join(CUT.words),
            "",
        ]
    ).encode()
    body = struct.pack("<I", len(vocabulary)) + vocabulary
    body += matrix(state["characters.weight"]) + layer(state["filters.weight"], state["filters.bias"])
    body += (
        matrix(state["values.weight"])
        + matrix(state["lexicon.weight"])
        + layer(state["token.weight"], state["token.bias"])
    )
    for i in range(len(DILATIONS)):
        body += layer(state[f"context.{i}.weight"], state[f"context.{i}.bias"])
    body += layer(state["roles.weight"], state["roles.bias"]) + layer(
        state["attention.weight"], state["attention.bias"]
    )
    for name in HEADS:
        body += layer(state[f"heads.{name}.weight"], state[f"heads.{name}.bias"])
    with open(file, "wb") as out:
        out.write(b"QLLOWGT1" + struct.pack("<Q", fnv(body)) + body)


if __name__ == "__main__":
    write(torch.load(sys.argv[1]), sys.argv[2])
