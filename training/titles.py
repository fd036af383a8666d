"""Titles of tasks, as people write them: verbs, things, names and places put together, and many that are whole already."""

import pathlib
import re

FOLDER = pathlib.Path(__file__).resolve().parent / "words"


def words(name):
    return (FOLDER / f"{name}.txt").read_text(encoding="utf-8").splitlines()


VERBS, DO = words("verbs_with_people"), words("verbs_with_things")
ENDINGS = [
    *(
        "rev B",
        "rev C",
        "plan B",
        "vitamin D",
        "part II",
        "vol 3",
        "gate C",
        "side A",
        "lot B",
        "team A",
        "type C",
        "big D",
    ),
    *(
        "in the ground",
        "in the shed",
        "in the oven",
        "in the wash",
        "off",
        "out",
        "up",
        "over",
        "back",
        "in",
        "on",
        "down",
    ),
    *(
        "de la Cruz",
        "du jour",
        "at JFK",
        "at the airport",
        "at home",
        "at the gym",
        "to go",
        "for real",
        "or else",
        "or not",
    ),
    *(
        "on hold",
        "at risk",
        "in bulk",
        "by mail",
        "by phone",
        "by hand",
        "by bus",
        "via email",
        "as is",
        "w/o sugar",
        "x2",
        "no. 5",
    ),
]
THINGS, PEOPLE, PLACES, WHOLE = words("things"), words("people"), words("places"), words("whole_titles")
PHRASAL = [pair.split(" ") for pair in words("phrasal_verbs")]
STATES = words("states")  # that follow a thing
TRAPS, TRAP_TASKS = words("trap_things"), words("trap_titles")  # hold what looks like a time and is none


def load_nouns(path="/usr/share/wordnet/index.noun"):
    words = []
    with open(path, encoding="utf-8") as index:
        for line in index:
            if not line.startswith(" "):
                lemma, _, _, *rest = line.split()
                if lemma.replace("_", "").isalpha() and len(lemma) < 22:
                    words.append(lemma.replace("_", " "))
    return words


def load_verbs(path="/usr/share/wordnet/index.verb"):
    with open(path, encoding="utf-8") as index:
        return [
            line.split()[0].replace("_", " ")
            for line in index
            if not line.startswith(" ") and line.split()[0].replace("_", "").isalpha()
        ]


# What makes the program take a look at a text, also within a word.
FRAGMENTS = re.compile(
    r"night|noon|morning|evening|early|later|soon|asap|week|jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec|around"
)


class Titles:
    def __init__(self, rng):
        self.r = rng
        self.nouns = load_nouns()
        self.verbs = load_verbs()
        self.fragment_nouns = [noun for noun in self.nouns if FRAGMENTS.search(noun)]
        self.fragment_verbs = [verb for verb in self.verbs if FRAGMENTS.search(verb)]

    def thing(self):
        r = self.r.random()
        if r < 0.6:
            return self.r.choice(THINGS)
        if r < 0.8:
            return self.r.choice(self.nouns)
        return self.r.choice(self.fragment_nouns) if r < 0.92 else self.r.choice(TRAPS)

    def number(self):
        r = self.r
        return r.choice(
            [
                str(r.randrange(1, 100)),
                str(r.randrange(100, 3000)),
                f"{r.randrange(1, 9)}.{r.randrange(10)}",
                f"#{r.randrange(1, 500)}",
                f"v{r.randrange(1, 9)}",
                f"{r.randrange(1, 9)}x",
                f"${r.randrange(5, 900)}",
                f"{r.randrange(1, 9)}-{r.randrange(10, 20)}",
                f"{r.randrange(2, 30)} kg",
                f"{r.randrange(1, 20)} lbs",
                f"{r.randrange(2, 40)} people",
                f"{r.randrange(1, 5)}k",
                f"{r.randrange(1, 100)}%",
                f"Q{r.randrange(1, 5)}",
                str(r.randrange(2020, 2028)),
            ]
        )

    def title(self):
        r = self.r
        form = r.choices(range(12), [17, 34, 15, 5, 6, 5, 4, 3, 3, 8, 6, 3])[0]
        if form == 0:
            text = r.choice(WHOLE)
        elif form == 1:
            text = f"{r.choice(DO)} {r.choice(['', '', '', 'the ', 'the ', 'a ', 'my ', 'some ', 'new ', 'our '])}{self.thing()}"
        elif form == 2:
            text = f"{r.choice(VERBS)} {r.choice(PEOPLE)}"
        elif form == 3:
            text = r.choice(TRAP_TASKS)
        elif form == 4:
            text = f"{r.choice(DO)} {r.choice(['', 'the '])}{self.thing()} and {self.thing()}"
        elif form == 5:
            text = (
                f"{r.choice(DO)} {self.number()} {self.thing()}"
                if r.random() < 0.5
                else f"{r.choice(DO)} {self.thing()} {self.number()}"
            )
        elif form == 6:
            text = f"{r.choice(self.verbs)} {r.choice(['the ', '', 'a '])}{r.choice(self.nouns)}"
        elif form == 7:
            text = self.thing()
        elif form == 8:
            text = f"{r.choice(['don’t forget to', 'dont forget', 'remember to', 'need to', 'have to', 'gotta', 'must', 'remind me to', 'i should', 'pls', 'please', 'todo:', 'reminder:', 'to do:', 'make sure to', 'try to', 'want to', 'we should', 'lets'])} {r.choice(DO)} {self.thing()}"
        elif form == 10:
            verb, particle = r.choice(PHRASAL)
            text = f"{verb} {r.choice(['', 'the ', 'my '])}{self.thing()} {particle}"
        elif form == 11:
            text = f"{self.thing()} {r.choice(STATES)}"
        else:
            text = f"{r.choice(VERBS)} {r.choice(PEOPLE)} {r.choice(['about', 're', 'for', 'regarding', 'on', 'and get'])} {r.choice(['', 'the '])}{self.thing()}"
        if r.random() < 0.16:
            text += " " + r.choice(PLACES)
        elif r.random() < 0.05:
            text += " " + r.choice(ENDINGS)
        return text

    def fraction(self):
        """Two numbers that are a part, a measure or a saying, and hardly ever a day."""
        return self.r.choice(
            ["1/2", "1/3", "2/3", "1/4", "3/4", "4/5", "1/8", "3/8", "5/8", "7/8", "1/16", "3/16", "5/16", "7/16"]
            + ["4/4", "3/4", "6/8", "2/4", "7/8", "16/9", "4/3", "21/9", "24/7", "50/50", "20/20", "80/20"]
        )

    def ratio(self):
        """Two numbers that are a fraction, a size or a score."""
        r = self.r
        return r.choice(
            [
                r.choice(
                    [
                        "1/2",
                        "1/3",
                        "2/3",
                        "1/4",
                        "3/4",
                        "1/5",
                        "4/5",
                        "1/8",
                        "3/8",
                        "5/8",
                        "7/8",
                        "1/16",
                        "3/16",
                        "5/16",
                        "7/16",
                        "9/16",
                    ]
                ),
                r.choice(
                    [
                        "4/4",
                        "3/4",
                        "6/8",
                        "2/4",
                        "5/4",
                        "12/8",
                        "7/8",
                        "2/2",
                        "16/9",
                        "4/3",
                        "21/9",
                        "24/7",
                        "9/11",
                        "50/50",
                        "20/20",
                        "80/20",
                    ]
                ),
                f"{r.randrange(1, 11)}/10",
                f"{r.randrange(1, 6)}/5",
                f"{r.randrange(1, 13)}/12",
                f"{r.randrange(9, 18)}/{r.randrange(5, 11)}",
                f"{r.randrange(1, 31)}/{r.randrange(2, 32)}",
            ]
        )

    def trap(self):
        """A title that holds a word or a number that could be a time, and is none."""
        r = self.r
        months = [
            "january",
            "february",
            "march",
            "april",
            "may",
            "june",
            "july",
            "august",
            "september",
            "october",
            "november",
            "december",
            "jan",
            "feb",
            "mar",
            "apr",
            "may",
            "jun",
            "jul",
            "aug",
            "sept",
            "oct",
            "nov",
            "dec",
        ]
        names = [
            "june",
            "may",
            "april",
            "jan",
            "august",
            "augusta",
            "mara",
            "mario",
            "marco",
            "marcus",
            "decker",
            "julie",
            "janet",
            "julian",
            "octavia",
            "janice",
            "maya",
            "marge",
            "martha",
            "sunny",
            "wednesday",
            "summer",
            "autumn",
            "dawn",
            "eve",
            "noel",
            "Jan",
            "June",
            "April",
            "May",
            "dr. marsh",
            "dr. novak",
            "mr. march",
            "mrs. may",
        ]
        return r.choice(
            [
                lambda: f"{r.choice(DO)} {r.choice(['', 'the ', 'our '])}{r.choice(months)} {r.choice(['invoice', 'report', 'budget', 'numbers', 'newsletter', 'rent', 'statement', 'photos', 'bill', 'issue', 'menu', 'minutes', 'payroll', 'schedule', 'expenses', 'start date', 'project', 'team', 'committee', 'paperwork', 'timesheet', 'figures', 'receipts', 'slides', 'meeting notes', 'event', 'trip', 'deadline list', 'campaign', 'release', 'cohort'])}",
                lambda: f"{r.choice(['lunch', 'dinner', 'call', 'coffee', 'zoom', 'meeting', 'mtg', '1:1', 'walk', 'drinks', 'appt', 'gym', 'movie', 'rewatch it', 'chat', 'sync'])} {r.choice(['w/', 'with', 'w', 'and'])} {r.choice(names)}",
                lambda: f"{r.choice(DO)} {self.thing()} {r.choice(['for', 'with', 'w/', 'from', 'to'])} {r.choice(names)}",
                lambda: f"{r.choice(VERBS)} {r.choice(names)} {r.choice(['about', 're', 'and', ''])} {self.thing()}".replace(
                    "  ", " "
                ),
                lambda: f"{r.choice(['study for', 'register for', 'sign up for', 'buy book for', 'take', 'prep for', 'practice for', 'register Maya for', 'pay for'])} {r.choice(['sat', 'SAT', 'sat prep', 'SAT prep', 'the sat', 'sat math', 'the SAT', 'sat subject test', 'psat and sat', 'sat tutor'])}",
                lambda: f"{r.choice(['meet Kim', 'taco truck', 'coffee', 'pickup', 'parking', 'lunch', 'check the shop', 'look at apartment', 'bus stop', 'bike rack'])} {r.choice(['near', 'at', 'on', 'corner of', '@', 'by', 'next to'])} {r.choice(['', 'the '])}{r.randrange(1, 99)}{r.choice(['th', 'st', 'nd', 'rd'])} {r.choice(['and Main', 'and Market', 'ave', 'street', 'st', '& Broadway', 'and Pine', 'avenue', 'floor', 'and May', 'and Marcy'])}",
                lambda: f"{r.choice(DO)} {self.thing()} {r.choice(['rm', 'room', 'gate', 'rink', 'table', 'seat', 'bay', 'apt', 'suite', 'hall', 'court', 'field', 'lane', 'ch', 'pg', 'p.', 'unit', 'locker'])} {r.randrange(1, 400)}",
                lambda: f"{r.randrange(2, 13)} {r.choice(['mo', 'month', 'week', 'wk', 'yr', 'year', 'day', 'hour', 'min'])} {r.choice(['checkup', 'review', 'follow up', 'anniversary', 'shots', 'plan', 'report', 'trial', 'class', 'warranty'])} {r.choice(['', 'w/ pediatrician', 'with Dana', 'for Max'])}".strip(),
                lambda: f"{r.choice(DO)} {r.choice(['the ', '', 'a ', 'my ', 'some '])}{r.choice(self.fragment_nouns)}",
                lambda: f"{r.choice(DO)} {r.choice(['the ', '', 'a '])}{r.choice(self.fragment_nouns)} {r.choice(self.nouns)}",
                lambda: f"{r.choice(self.fragment_verbs)} {r.choice(['the ', '', 'a ', 'my '])}{self.thing()}",
                lambda: f"{r.choice(self.fragment_nouns)} {r.choice(['and', 'or', '+', '&', 'for', 'with'])} {self.thing()}",
                lambda: f"{r.choice(DO)} {r.choice(['the ', 'a ', 'that '])}{r.randrange(1, 32)}/{r.randrange(2, 32)} {self.thing()}",
                lambda: f"{r.choice(DO)} {r.choice(['the ', 'a ', 'that '])}{self.fraction()} {self.thing()}",
                lambda: f"{self.fraction()} {r.choice(['cup', 'inch', 'of the', 'price', 'size', 'lb', 'scale', 'mile', 'full'])} {self.thing()} {r.choice(['', 'for Nana', 'is missing', 'broken', 'left', 'for the deck', 'and screws', 'to Bob', ', tell ' + r.choice(PEOPLE)])}".strip(),
                lambda: f"{r.choice(['set ratio', 'ratio', 'blood pressure', 'bp', 'score', 'rated', 'mix', 'vision', 'odds', 'set aspect ratio', 'battery at', 'progress', 'got', 'scored', 'rating', 'time signature', 'split it', 'cut to', 'sand to', 'tuning', 'grade'])} {self.ratio()} {r.choice(['', 'on the export', ', tell nurse', 'for the song', 'on the exam', 'again'])}".strip(),
                lambda: f"{r.choice(['Beethoven', 'Mahler', 'Bruckner', 'Henry', 'Louis', 'Elizabeth', 'Dvorak', 'Shostakovich'])}{r.choice([chr(39) + 's ', ' the ', ' '])}{r.randrange(1, 17)}{r.choice(['th', 'th', 'st', 'nd', 'rd'])}{r.choice(['', ', find a recording', ' tickets', ' symphony', ' essay', ' cd for dad'])}",
                lambda: f"{r.choice(['replace', 'buy', 'check', 'order', 'new', 'find'])} {r.choice(['fuse', 'breaker', 'plug', 'charger', 'cable', 'relay', 'seat', 'gate', 'row', 'locker', 'unit', 'apt', 'room', 'bay', 'exhibit', 'platform'])} {r.randrange(1, 41)}{r.choice(['a', 'A', ' a', 'p', ' amp', 'a'])} {r.choice(['', 'in the car', 'for the ' + r.choice(self.nouns), 'and ' + self.thing(), 'on the seating plan', 'by the door'])}".strip(),
                lambda: f"{r.randrange(1, 41)}{r.choice(['a', 'A', 'p'])} {r.choice(['fuse', 'on the seating plan', 'in the hall', 'socket', 'charger', 'is empty', 'plug', 'is taken', 'team', 'class'])}, {self.title()}",
                lambda: f"{r.choice(['May', 'March', 'June', 'April', 'Friday', 'Sunday', 'August'])} the {r.choice(['Fourth', 'First', 'Second', 'Third', '4th', '13th', 'Great', '5th', 'Fifth'])} {self.thing()}",
                lambda: f"{self.thing()} ({r.randrange(1, 25)})",
                lambda: f"{r.choice(DO)} {self.thing()} ({r.randrange(1, 25)})",
                lambda: f"{r.choice(['weekend', 'sunday', 'friday', 'monday', 'morning', 'evening', 'night', 'midnight', 'saturday', 'christmas', 'mays', 'julys', 'marches', 'early', 'late night'])} {self.thing()}",
                lambda: f"{r.choice(['mondays', 'tuesdays', 'wednesdays', 'thursdays', 'fridays', 'saturdays', 'sundays', 'weekends', 'May', 'June', 'April', 'August', 'October', 'The March', 'Friday', 'Sunday', 'Thursday'])} {r.choice(['with', 'and', 'or', 'by', 'the', 'in', 'of', 'at the', 'on the'])} {self.thing()}, {self.title()}",
                lambda: f"{r.choice(['house number', 'go to', 'pick up at', 'drop off at', 'find', 'drive to', 'view', 'map', 'address:'])} {r.randrange(1, 400)} {r.choice(['december', 'may', 'june', 'march', 'april', 'august', 'october', 'sunday', 'friday', 'autumn', 'maple', 'mayfair', 'marlow', 'january', 'juniper', 'augusta'])} {r.choice(['dr', 'st', 'street', 'lane', 'ave', 'road', 'rd', 'way', 'court', 'drive'])}{r.choice(['', ' on the map', ' for ' + r.choice(PEOPLE)])}",
                lambda: f"{r.choice(['what did we', 'how much did we', 'who', 'why did we', 'where did we', 'did we'])} {r.choice(['pay', 'spend', 'order', 'book', 'eat', 'visit', 'buy'])} in {r.choice(months)}? {self.title()}",
                lambda: f"{r.choice(DO)} {self.thing()}, {r.choice(['page', 'track', 'game', 'box', 'level', 'aisle', 'row', 'chapter', 'set', 'round', 'disc'])} {r.randrange(1, 32)}/{r.randrange(2, 32)}",
                lambda: f"{r.choice(TRAP_TASKS)}",
                lambda: f"{r.choice(DO)} {r.choice(TRAPS)}",
                lambda: f"{r.choice(DO)} {r.randrange(1, 30)} {self.thing()}",
                lambda: f"{r.choice(['pack lunch', 'make lunch', 'lunch order', 'bring lunch', 'lunch money', 'lunch boxes', 'dinner reservation', 'order dinner', 'breakfast stuff', 'night light', 'morning pills', 'evening class', 'night bus', 'afternoon tea', 'midnight snack', 'weekend bag', 'morning paper'])} {r.choice(['', 'for ' + r.choice(names), 'with ' + r.choice(PEOPLE), self.thing()])}".strip(),
                lambda: f"{r.choice(DO)} {self.thing()} {r.choice(['for 20 min', 'for an hour', 'for 2 weeks', 'for 3 days', 'for half an hour', '2 hours', '(30 min)', '45 min', '1 hour', 'x3', 'part 2', 'pt 1', 'no. 5', '#3', '$40', '10 kg', '5k', '2x', 'every day', 'v2'])}",
            ]
        )()

    def aside(self):
        """What follows a comma."""
        r = self.r
        return r.choice(
            [
                lambda: self.title(),
                lambda: self.title(),
                lambda: f"bring {self.thing()}",
                lambda: f"ask about {self.thing()}",
                lambda: f"{r.choice(PEOPLE)} {r.choice(['is coming', 'needs it', 'asked', 'too', 'will drive', 'picks me up', 'is home', 'is away', 'wants to know', 'has the keys', 'said so', 'might come', 'pays'])}",
                lambda: f"{self.thing()} {r.choice(['is empty', 'is broken', 'ran out', 'is low', 'is full', 'are gone', 'is in the car', 'looks bad', 'too', 'as well', 'if possible'])}",
                lambda: r.choice(
                    [
                        "not urgent",
                        "its important",
                        "$" + str(r.randrange(5, 900)),
                        "stay home",
                        "wear a suit",
                        "dont forget",
                        "they charge again",
                        "rm " + self.number(),
                        "gate " + str(r.randrange(1, 60)),
                        "upstairs",
                        "no cash",
                        "bring id",
                        "he was a friend",
                        "call first",
                        "urgent",
                        "confirm by email",
                        "see notes",
                    ]
                ),
            ]
        )()
