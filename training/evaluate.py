import sys, json, subprocess, datetime, math
from predict import *


def wilson(k, n):
    if n == 0:
        return (0, 1)
    z = 1.96
    p = k / n
    c = (p + z * z / 2 / n) / (1 + z * z / n)
    h = z / (1 + z * z / n) * math.sqrt(p * (1 - p) / n + z * z / 4 / n / n)
    return (c - h, c + h)


def judge(net, rows, program="/tmp/qbin/quillo", sure=0.5):
    import predict

    predict.SURE = sure
    outs = outputs(net, [r["text"] for r in rows])
    answers = []
    for r, o in zip(rows, outs):
        now = datetime.datetime.fromisoformat(r["now"])
        answers.append(classify(r["text"], now, month_first(r.get("locale", "en_US")), o))
    q = "".join(
        json.dumps({"id": i, "classification": a, "now": r["now"], "tz": "America/New_York"}) + "\n"
        for i, ((a, s), r) in enumerate(zip(answers, rows))
    )
    res = (
        subprocess.run([program, "resolve", "--jsonl"], input=q.encode(), stdout=subprocess.PIPE)
        .stdout.decode()
        .splitlines()
    )
    from zoneinfo import ZoneInfo

    out = []
    for line, r, (a, s) in zip(res, rows, answers):
        due = json.loads(line)["due"]
        due = (
            None
            if due is None
            else datetime.datetime.fromtimestamp(due, ZoneInfo("America/New_York")).strftime("%Y-%m-%dT%H:%M")
        )
        out.append((r, a, s, due))
    return out


def report(results, name, show=False):
    pos = [x for x in results if x[0]["due"]]
    neg = [x for x in results if not x[0]["due"]]
    right = sum(d == r["due"] for r, a, s, d in pos)
    wrong = sum(d is not None and d != r["due"] for r, a, s, d in pos)
    title = sum((a["title"].strip() or r["text"].strip()) == r["title"] for r, a, s, d in results)
    ptitle = sum((a["title"].strip() or r["text"].strip()) == r["title"] for r, a, s, d in pos)
    false = sum(d is not None for r, a, s, d in neg)
    f = lambda k, n: f"{100*k/max(n,1):.1f}% [{100*wilson(k,n)[0]:.1f}-{100*wilson(k,n)[1]:.1f}]"
    allright = right + len(neg) - false
    print(
        f"{name}: dated right {f(right,len(pos))}; all lines' dates right {f(allright,len(results))}; title all {f(title,len(results))} dated {f(ptitle,len(pos))}; wrong date {f(wrong,len(pos))} of all {f(wrong,len(results))}; false dates {f(false,len(neg))} ({false})"
    )
    if show:
        for r, a, s, d in results:
            t = a["title"].strip() or r["text"].strip()
            if d != r["due"] or t != r["title"]:
                print(
                    ("DATE " if d != r["due"] else "title"),
                    f"{s:.2f}",
                    repr(r["text"]),
                    r["now"][:10],
                    "want",
                    r["due"],
                    repr(r["title"]),
                    "got",
                    d,
                    repr(t),
                    a["kind"],
                    a["amount"],
                )


if __name__ == "__main__":
    net = load(sys.argv[1])
    for file in sys.argv[2].split(","):
        rows = [json.loads(l) for l in open(file)]
        report(judge(net, rows), file.split("/")[-1], "-v" in sys.argv)
    lines = open("/tmp/re/lines.txt").read().splitlines()
    rows = [{"text": t, "now": "2025-03-04T09:41", "due": None, "title": t} for t in lines]
    res = judge(net, rows)
    false = [(r["text"], a["kind"], round(s, 2)) for r, a, s, d in res if d is not None]
    print(
        "real English that reaches the model:",
        len(rows),
        "false dates",
        len(false),
        f"{100 * len(false) / len(rows):.2f}%",
    )
    if "-r" in sys.argv:
        for f in false:
            print("   ", f)
