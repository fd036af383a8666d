"""From a text to an answer, as src/classifier does it: the network's outputs, read with what the text says in digits."""

import datetime

import numpy as np
import torch

from dataset import Dataset
from generate import ROLES
from net import Net
from phrases import AMOUNTS, KINDS, MINUTES, SHIFTED, SHIFTS, WEEKDAYS, Meaning
from tokens import is_digit, is_letter, may_be_cut, tokenize

SURE = 0.75
MONTH_FIRST = {"US", "PH", "CA", "FM", "PW", "MH", "GU", "PR", "VI", "AS", "MP"}


def month_first(locale):
    """Whether dates such as 5/12 begin with the month there."""
    language, mark, region = locale.partition("_")
    return region.split("_")[0] in MONTH_FIRST if mark else len(language) != 2 or language == "en"


def load(file):
    net = Net()
    state = torch.load(file)
    net.load_state_dict({k: v.half().float() for k, v in state.items()})
    return net.eval()


def outputs(net, texts):
    """For each text: tokens, role probabilities, head probabilities."""
    d = Dataset()
    tokens = []
    for text in texts:
        t = tokenize(text)
        tokens.append(t)
        d.add(text, "K" * len(t), Meaning())
    d.finish()
    results = []
    with torch.no_grad():
        for start in range(0, len(texts), 256):
            indices = np.arange(start, min(start + 256, len(texts)))
            if not len(indices):
                continue
            words, ids, flags, mask, _, _ = d.batch(indices)
            roles, heads = net(words, ids, flags, mask)
            for row, i in enumerate(indices):
                n = len(tokens[i])
                results.append(
                    (tokens[i], roles[row, :n].numpy(), {name: head[row].numpy() for name, head in heads.items()})
                )
    return results


def softmax(x):
    e = np.exp(x - x.max())
    return e / e.sum()


NONE = {"kind": "NONE", "amount": 0, "month": 0, "day": 0, "hasTime": False, "hour": 0, "minute": 0}


def classify(text, now, first_is_month, output):
    """The answer and its score: a dictionary of the eight properties."""
    tokens, role_scores, head_scores = output
    none = dict(NONE, title=text)
    heads = {name: softmax(scores) for name, scores in head_scores.items()}
    kind_index = int(heads["kind"].argmax())
    kind, score = KINDS[kind_index], float(heads["kind"][kind_index])
    if kind == "NONE" or not tokens:
        return none, score

    # What each token is for; digits alone can stand for numbers.
    roles, unsure = [], 1.0
    for token, scores in zip(tokens, role_scores):
        allowed = len(ROLES) if is_digit(token.text[0]) else 2
        p = softmax(scores)[:allowed]
        best = int(p.argmax())
        # A word that no phrase has says something else: rather one too many in the title than one lost.
        if ROLES[best] == "S" and is_letter(token.text[0]) and not may_be_cut(token.text):
            best = ROLES.index("K")
        roles.append(ROLES[best])
        if is_digit(token.text[0]):
            unsure = min(unsure, float(p[best] / p.sum()))
    score *= unsure

    def values(role):
        return [token.text for token, r in zip(tokens, roles) if r == role and len(token.text) <= 4]

    def head(name, table=None):
        nonlocal score
        i = int(heads[name].argmax())
        score *= float(heads[name][i])
        return table[i] if table else i

    def amount():
        N = values("N")
        return int(N[0]) if N else head("amount", AMOUNTS)

    # The time of day.
    hour = minute = None
    H, T, M = values("H"), values("T"), values("M")
    if kind not in ("IN_MINUTES", "IN_HOURS"):
        if T or H:
            if T:
                run = int(T[0])
                hour, minute = run // 100, run % 100
                if len(T[0]) < 3:
                    return none, 0.0
            else:
                hour, minute = int(H[0]), int(M[0]) if M else 0
            if hour > 24 or minute > 59:
                return none, 0.0
            if hour == 24:
                hour = 0
            if hour <= 12:  # morning or afternoon
                am, pm = hour % 12, hour % 12 + 12
                p = heads["hour"]
                hour, sure = (am, p[am]) if p[am] >= p[pm] else (pm, p[pm])
                score *= float(sure / max(p[am] + p[pm], 1e-9))
            if not M and not T and H:
                # "half past 6": the minutes stand in words.
                i = int(heads["minute"].argmax())
                if float(heads["minute"][i]) > 0.5:
                    minute = MINUTES[i]
        else:
            h = head("hour")
            if h < 24:
                hour, minute = h, head("minute", MINUTES)

    answer = dict(NONE)

    def day_number():
        D = values("D")
        if D:
            return int(D[0]) if int(D[0]) <= 31 else None
        return head("day") or None

    def year_fits(date):
        Y = values("Y")
        if not Y:
            return True
        year = int(Y[0])
        return date.year == (year if len(Y[0]) == 4 else 2000 + year)

    today, further = now.date(), 0
    shift = SHIFTS[head("shift")] if kind in SHIFTED else "NONE"
    if shift != "NONE" and (shift == "FROM_TOMORROW") != kind.startswith("IN_"):
        return none, 0.0
    if shift == "FROM_TOMORROW":
        today, further = today + datetime.timedelta(days=1), 1
    elif shift != "NONE":
        # As far from another today, the date itself is meant.
        away = amount()
        if not 1 <= away <= 999:
            return none, 0.0
        away *= (7 if shift.startswith("WEEKS") else 1) * (1 if shift.endswith("BEFORE") else -1)
        today += datetime.timedelta(days=away)

    def last_of(year, month):
        return (datetime.date(year + month // 12, month % 12 + 1, 1) - datetime.timedelta(days=1)).day

    def coming(month, day):
        """The first such day from today on."""
        for year in range(today.year, today.year + 9):
            if day <= last_of(year, month):
                date = datetime.date(year, month, day)
                if date >= today:
                    return date
            elif not (month == 2 and day == 29):
                return None
        return None

    def specific(month, day, clamp=False):
        if not 1 <= month <= 12 or not 1 <= day <= 31:
            return False
        if clamp:
            this = min(day, last_of(today.year, month))
            date = datetime.date(today.year, month, this)
            if date < today:
                date = datetime.date(today.year + 1, month, min(day, last_of(today.year + 1, month)))
        else:
            date = coming(month, day)
        if date and (month, day) == (2, 29) and year_fits(date):
            return on(date) if date.year <= today.year + 1 else False
        if date is None or not year_fits(date) or date > today.replace(day=1) + datetime.timedelta(days=366 + 31):
            return False
        if shift != "NONE":
            return on(date)
        answer.update(kind="SPECIFIC_DATE", month=month, day=date.day)
        return True

    def on(date):
        days = (date - today).days + further
        if days == 0:
            answer["kind"] = "TODAY"
        elif days > 0:
            answer.update(kind="IN_DAYS", amount=days)
        else:
            return False
        return True

    def nth_weekday(year, month, weekday, n):
        """weekday: Monday = 0."""
        if n > 0:
            first = datetime.date(year, month, 1)
            return first + datetime.timedelta(days=(weekday - first.weekday()) % 7 + 7 * (n - 1))
        last = datetime.date(year, month, last_of(year, month))
        return last - datetime.timedelta(days=(last.weekday() - weekday) % 7)

    def easter(year):
        a, b, c = year % 19, year // 100, year % 100
        h = (19 * a + b - b // 4 - (b - (b + 8) // 25 + 1) // 3 + 15) % 30
        l = (32 + 2 * (b % 4) + 2 * (c // 4) - h - c % 4) % 7
        m = (a + 11 * h + 22 * l) // 451
        month, day = divmod(h + l - 7 * m + 114, 31)
        return datetime.date(year, month, day + 1)

    def holiday(of_year):
        return on(next(d for d in map(of_year, range(today.year - 1, today.year + 9)) if d >= today))

    one = datetime.timedelta(days=1)
    weekday = (today.weekday() + 1) % 7  # Sunday = 0
    monday = today - datetime.timedelta(days=today.weekday())  # of this week, which begins with it
    ok = True
    if kind in ("IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS", "WEEKS_FROM_TOMORROW", "IN_MONTHS"):
        count = amount()
        if not 1 <= count <= 999:
            ok = False
        elif kind == "IN_MONTHS":
            months = today.year * 12 + today.month - 1 + count
            year, month = months // 12, months % 12 + 1
            ok = on(datetime.date(year, month, min(today.day, last_of(year, month))))
        elif shift == "FROM_TOMORROW":
            ok = on(today + datetime.timedelta(days=count))
        else:
            answer.update(kind=kind, amount=count)
    elif kind == "SPECIFIC_DATE":
        month, day = head("month"), day_number()
        if day is None:
            ok = False
        elif month:
            ok = specific(month, day, clamp=not values("D"))
        elif shift != "NONE":
            months = today.year * 12 + today.month - 1
            dates = [
                datetime.date(m // 12, m % 12 + 1, day)
                for m in range(months, months + 4)
                if day <= last_of(m // 12, m % 12 + 1)
            ]
            ok = not values("Y") and on(next(date for date in dates if date >= today))
        else:
            answer.update(kind=kind, day=day)
            if today.month == 12 and day < today.day:
                ok = specific(1, day)
            elif not values("Y") and day > last_of(today.year, today.month) and day >= today.day:
                ok = False
            ok = ok and not values("Y")
    elif kind == "NUMERIC_DATE":
        A, B, I, D = values("A"), values("B"), values("I"), values("D")
        if A and B:
            month, day = (int(A[0]), int(B[0])) if first_is_month else (int(B[0]), int(A[0]))
            if month > 12:
                month, day = day, month
            ok = specific(month, day)
        elif I and D:
            month, day = int(I[0]), int(D[0])
            if month > 12 and day <= 12:
                month, day = day, month
            ok = specific(month, day)
        else:
            ok = False
    elif kind in ("THIS_MONTH_DAY", "NEXT_MONTH_DAY"):
        day = day_number()
        if day is None:
            ok = False
        else:
            months = today.year * 12 + today.month - 1 + (kind == "NEXT_MONTH_DAY")
            date = datetime.date(months // 12, months % 12 + 1, min(day, last_of(months // 12, months % 12 + 1)))
            if date < today:
                months += 1
                date = datetime.date(months // 12, months % 12 + 1, min(day, last_of(months // 12, months % 12 + 1)))
            ok = on(date)
    elif kind.startswith("NEXT_WEEK_"):
        index = [w.upper() for w in WEEKDAYS].index(kind[10:])
        ok = on(monday + 7 * one + ((index - 1) % 7) * one)
    elif kind.startswith("WEEK_AFTER_") and kind != "WEEK_AFTER_NEXT":
        index = [w.upper() for w in WEEKDAYS].index(kind[11:])
        weeks = amount()
        ok = 1 <= weeks <= 999 and on(today + ((index - weekday - 1) % 7 + 1 + 7 * weeks) * one)
    elif kind.startswith("NTH_"):
        index = [w.upper() for w in WEEKDAYS].index(kind[4:])
        month = head("month")
        which = amount()
        if not 1 <= which <= 5:
            ok = False
        else:
            of = lambda months: nth_weekday(months // 12, months % 12 + 1, (index - 1) % 7, which if which < 5 else -1)
            months, step = (today.year * 12 + month - 1, 12) if month else (today.year * 12 + today.month - 1, 1)
            ok = on(of(months) if of(months) >= today else of(months + step))
    elif kind == "NEXT_WEEKEND":
        ok = on(today + ((6 - weekday) % 7 + 7) * one)
    elif kind == "WEEK_AFTER_NEXT":
        ok = on(monday + 14 * one)
    elif kind == "THANKSGIVING":
        ok = holiday(lambda y: nth_weekday(y, 11, 3, 4))
    elif kind == "CYBER_MONDAY":
        ok = holiday(lambda y: nth_weekday(y, 11, 3, 4) + 4 * one)
    elif kind == "MLK_DAY":
        ok = holiday(lambda y: nth_weekday(y, 1, 0, 3))
    elif kind == "PRESIDENTS_DAY":
        ok = holiday(lambda y: nth_weekday(y, 2, 0, 3))
    elif kind == "COLUMBUS_DAY":
        ok = holiday(lambda y: nth_weekday(y, 10, 0, 2))
    elif kind == "LABOR_DAY":
        ok = holiday(lambda y: nth_weekday(y, 9, 0, 1))
    elif kind == "MEMORIAL_DAY":
        ok = holiday(lambda y: nth_weekday(y, 5, 0, -1))
    elif kind == "MOTHERS_DAY":
        ok = holiday(lambda y: nth_weekday(y, 5, 6, 2))
    elif kind == "FATHERS_DAY":
        ok = holiday(lambda y: nth_weekday(y, 6, 6, 3))
    elif kind == "EASTER":
        ok = holiday(easter)
    elif kind == "GOOD_FRIDAY":
        ok = holiday(lambda y: easter(y) - 2 * one)
    elif kind == "EASTER_MONDAY":
        ok = holiday(lambda y: easter(y) + one)
    else:
        answer["kind"] = kind
    if not ok or score < SURE:
        return none, (score if ok else 0.0)
    if hour is not None:
        answer.update(hasTime=True, hour=hour, minute=minute)
    answer["title"] = title_of(text, tokens, roles)
    return answer, score


def title_of(text, tokens, roles):
    kept, last = "", None
    given, roles = roles, list(roles)
    # The comma that ends what is cut ends the words before it as well.
    for i in range(1, len(tokens) - 1):
        if (
            tokens[i].text in ",;."
            and given[i] != "K"
            and given[i - 1] != "K"
            and given[i + 1] == "K"
            and "K" in given[:i]
            and tokens[i].end < tokens[i + 1].start
        ):
            roles[i] = "K"
    for i, (token, role) in enumerate(zip(tokens, roles)):
        if role != "K":
            continue
        if last is not None:
            between = text[tokens[last].end : token.start]
            cut = i != last + 1
            # A comma behind what was cut belongs to the word before.
            closing = token.text in ",.;:!?)…" and tokens[i - 1].end == token.start
            kept += "" if closing else " " if cut or between else ""
        kept += text[token.start : token.end]
        last = i
    return kept.lstrip(" ,;:-–—|@.)").rstrip(" ,;:-–—|@(")
