"""Texts as the network sees them: the same steps as src/classifier/Tokens.cpp, and in the same order."""

import pathlib
from dataclasses import dataclass

LONGEST = 500  # characters of a text
TOKEN_CHARACTERS = 12
CHARACTERS = "abcdefghijklmnopqrstuvwxyz0123456789'.,:;/-@#$%&()+!?\"~*_–’"
CHARACTER_INDEX = {c: i + 2 for i, c in enumerate(CHARACTERS)}  # 0 is nothing, 1 any other
CHARACTER_COUNT = len(CHARACTERS) + 2

# Words that say when, for telling misspelt ones from others.
LEXICON_WORDS = """today tomorrow tonight tmrw tomoz monday tuesday wednesday thursday friday saturday sunday mon tue tues wed weds thu thur thurs fri sat sun
january february march april may june july august september october november december jan feb mar apr jun jul aug sep sept oct nov dec
morning afternoon evening night noon midnight midday lunch lunchtime minute minutes hour hours day days week weeks weekend month months year years
min mins hr hrs wk wks wkend wknd early late later mid middle end start beginning next this coming first second third fourth fifth sixth seventh eighth ninth tenth
eleventh twelfth twentieth thirtieth one two three four five six seven eight nine ten eleven twelve fifteen twenty thirty forty fifty half quarter past couple few several
christmas xmas thanksgiving easter halloween valentine eve new eod eow eom cob business close thing from now after before around about by until till between due fortnight
nxt tonite nite following within another last morn mornin noonish midweek ish oclock clock thru valentines presidents memorial labor veterans mothers fathers mlk nye sometime anytime starting deadline latest approx roughly sharp btw bfr """.split()
assert len(set(LEXICON_WORDS)) == len(LEXICON_WORDS)
LEXICON_COUNT = len(LEXICON_WORDS) + 1  # 0 is none


def is_digit(c):
    return "0" <= c <= "9"


def is_letter(c):
    """Beyond ASCII everything counts as a letter but blanks, marks and pictures."""
    if c < "\x80":
        return "a" <= c <= "z" or "A" <= c <= "Z"
    code = ord(c)
    return not (
        code < 0xC0
        or code in (0xD7, 0xF7)
        or 0x2000 <= code < 0x2C00
        or 0x3000 <= code < 0x3040
        or 0xFE00 <= code < 0xFE10
        or code in (0xFEFF, 0xFFFD)
        or code >= 0x1F000
    )


def is_blank(c):
    return c in " \t\n\r\v\f\x85\xa0" or "\u2000" <= c <= "\u200a" or c in "\u1680\u2028\u2029\u202f\u205f\u3000"


def is_apostrophe(c):
    return c in "'’"


def lower(c):
    return chr(ord(c) + 32) if "A" <= c <= "Z" else c


@dataclass
class Token:
    start: int
    end: int
    text: str  # lower case


def tokenize(text):
    tokens, at = [], 0
    while at < len(text):
        c = text[at]
        if is_blank(c):
            at += 1
            continue
        end = at + 1
        if is_digit(c):
            while end < len(text) and is_digit(text[end]):
                end += 1
        elif is_letter(c):
            while end < len(text) and (
                is_letter(text[end]) or (is_apostrophe(text[end]) and end + 1 < len(text) and is_letter(text[end + 1]))
            ):
                end += 1
        tokens.append(Token(at, end, "".join(lower(x) for x in text[at:end])))
        at = end
    return tokens


# What a run of digits could be.
VALUE_CLOCK, VALUE_YEAR, VALUE_OTHER, VALUE_LONG, VALUE_NONE = 100, 101, 102, 103, 104
VALUE_COUNT = 105


def value_class(text):
    if not is_digit(text[0]):
        return VALUE_NONE
    if len(text) <= 2:
        return int(text)
    if len(text) > 4:
        return VALUE_LONG
    n = int(text)
    if len(text) == 4 and 1900 <= n < 2100:
        return VALUE_YEAR
    if n // 100 <= 23 and n % 100 < 60:
        return VALUE_CLOCK
    return VALUE_OTHER


def distance(a, b, limit):
    """Edits between two words (a swap of neighbours is one), or limit + 1 if there are more."""
    if abs(len(a) - len(b)) > limit:
        return limit + 1
    before, row = None, list(range(len(b) + 1))
    for i in range(1, len(a) + 1):
        last, row_new = row, [i] + [0] * len(b)
        for j in range(1, len(b) + 1):
            cost = 0 if a[i - 1] == b[j - 1] else 1
            best = min(last[j] + 1, row_new[j - 1] + 1, last[j - 1] + cost)
            if before is not None and j > 1 and a[i - 1] == b[j - 2] and a[i - 2] == b[j - 1]:
                best = min(best, before[j - 2] + 1)
            row_new[j] = best
        before, row = last, row_new
        if min(row) > limit:
            return limit + 1
    return min(row[len(b)], limit + 1)


class Lexicon:
    """Words, found also where they are misspelt."""

    def __init__(self, words):
        self.words = words
        self.places = {word: i + 1 for i, word in enumerate(words)}
        self.found = {}

    def look(self, word):
        """The place of the word that is meant, from 1, and how many slips away it is (0 to 2); 0 and 3 if none is."""
        if word not in self.found:
            if len(self.found) > 400_000:
                self.found.clear()
            self.found[word] = self._search(word)
        return self.found[word]

    def _search(self, word):
        if word in self.places:
            return self.places[word], 0
        best, best_distance = 0, 3
        if len(word) < 4 or len(word) > 14:
            return best, best_distance
        limit = 1 if len(word) < 7 else 2
        for i, known in enumerate(self.words):
            if 4 <= len(known) <= 16 and abs(len(known) - len(word)) <= limit:
                slips = distance(word, known, limit)
                if slips <= limit and slips < best_distance:
                    best, best_distance = i + 1, slips
        return best, best_distance


LEXICON = Lexicon(LEXICON_WORDS)
# Words that may be cut from a title.
CUT = Lexicon((pathlib.Path(__file__).resolve().parent / "words" / "cut.txt").read_text(encoding="utf-8").split())


def may_be_cut(word):
    """Of letters; short ones always."""
    return len(word) < 3 or CUT.look(word)[1] < 3


FLAG_COUNT = 10


def features(text, tokens):
    """For each token: characters, value class, word of the lexicon, flags."""
    rows = []
    for i, token in enumerate(tokens):
        word = token.text
        shown = word if len(word) <= TOKEN_CHARACTERS else word[:8] + word[-4:]
        characters = [CHARACTER_INDEX.get(c, 1) for c in shown] + [0] * (TOKEN_CHARACTERS - len(shown))
        index, edits = LEXICON.look(word) if is_letter(word[0]) else (0, 3)
        original = text[token.start : token.end]
        letters = [c for c in original if "a" <= c <= "z" or "A" <= c <= "Z"]
        flags = [
            i == 0 or tokens[i - 1].end < token.start,  # blank before
            i + 1 < len(tokens) and tokens[i + 1].start > token.end,  # blank behind
            "A" <= original[0] <= "Z",  # capital
            len(letters) > 1 and all(c <= "Z" for c in letters),  # all capitals
            original[0] == "0" and len(original) > 1,  # leading zero
            i == 0,
            i == len(tokens) - 1,
            edits == 0,
            edits == 1,
            edits == 2,
        ]
        rows.append((characters, value_class(word), index, [float(flag) for flag in flags]))
    return rows
