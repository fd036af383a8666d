import os, sys, time, pickle, math, random

os.environ.setdefault("OMP_NUM_THREADS", "1")
import numpy as np, torch
from torch.nn import functional as F
from dataset import Dataset, IGNORED
from net import Net, HEADS


def main(data, out, epochs=2, seed=1, batch=192, rate=2.5e-3, start=None):
    torch.set_num_threads(1)
    torch.manual_seed(seed)
    d = Dataset()
    t = time.time()
    for file in data:
        for text, roles, meaning in pickle.load(open(file, "rb")):
            d.add(text, roles, meaning)
    d.finish()
    print(len(d), "texts", len(d.word_index), "words", round(time.time() - t), "s", flush=True)
    net = Net()
    if start:
        net.load_state_dict(torch.load(start))
    opt = torch.optim.AdamW(net.parameters(), lr=rate, weight_decay=0.01, betas=(0.9, 0.98))
    order_rng = np.random.default_rng(seed)
    steps = epochs * (len(d) // batch)
    step, losses, t = 0, [], time.time()
    lengths = np.array([len(i) for i in d.ids])
    for epoch in range(epochs):
        order = order_rng.permutation(len(d))
        # Texts of about one length together.
        chunks = [
            c[np.argsort(lengths[c], kind="stable")] for c in np.array_split(order, max(1, len(order) // (batch * 50)))
        ]
        batches = [c[i : i + batch] for c in chunks for i in range(0, len(c) - batch + 1, batch)]
        order_rng.shuffle(batches)
        for indices in batches:
            words, ids, flags, mask, roles, labels = d.batch(indices)
            for group in opt.param_groups:
                warm = min(1, (step + 1) / 400)
                group["lr"] = rate * warm * (0.02 + 0.98 * 0.5 * (1 + math.cos(math.pi * min(1, step / steps))))
            r, heads = net(words, ids, flags, mask)
            loss = F.cross_entropy(r.reshape(-1, r.shape[2]), roles.reshape(-1), ignore_index=IGNORED) * 3
            for i, name in enumerate(HEADS):
                if (labels[:, i] != IGNORED).any():
                    share = (labels[:, i] != IGNORED).float().mean()
                    loss = loss + F.cross_entropy(
                        heads[name], labels[:, i], ignore_index=IGNORED, label_smoothing=0.0
                    ) * (0.3 + 0.7 * share)
            opt.zero_grad()
            loss.backward()
            torch.nn.utils.clip_grad_norm_(net.parameters(), 1.0)
            opt.step()
            losses.append(loss.item())
            step += 1
            if step % 500 == 0:
                print(
                    f"epoch {epoch} step {step}/{steps} loss {np.mean(losses[-500:]):.4f} {time.time() - t:.0f}s",
                    flush=True,
                )
                torch.save(net.state_dict(), out)
    torch.save(net.state_dict(), out)


if __name__ == "__main__":
    import argparse

    p = argparse.ArgumentParser()
    p.add_argument("--data", nargs="+")
    p.add_argument("--out")
    p.add_argument("--epochs", type=int, default=2)
    p.add_argument("--seed", type=int, default=1)
    p.add_argument("--start")
    p.add_argument("--rate", type=float, default=2.5e-3)
    a = p.parse_args()
    main(a.data, a.out, a.epochs, a.seed, start=a.start, rate=a.rate)
