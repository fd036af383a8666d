"""Makes one network of several that went on from the same one, each with other texts or in another order: their mean errs
less than any of them.

usage: average.py FILE NETWORK...
"""

import sys

import torch


def main(file, *networks):
    states = [torch.load(network) for network in networks]
    torch.save({name: sum(state[name] for state in states) / len(states) for name in states[0]}, file)


if __name__ == "__main__":
    main(*sys.argv[1:])
