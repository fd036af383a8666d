"""Texts that look as if they spoke of time and do not: made ones, and lines of real English."""

import re

from titles import DO, PEOPLE, PLACES, TRAPS, TRAP_TASKS, VERBS
from written import Written


class Negatives:
    def __init__(self, rng, titles, real):
        self.r, self.titles, self.real = rng, titles, real
        self.written = Written(rng)

    def made(self):
        r, t = self.r, self.titles
        n = lambda lo=1, hi=40: r.randrange(lo, hi)
        thing, noun = t.thing, lambda: r.choice(t.nouns)
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
            "aug",
            "sept",
            "oct",
            "nov",
            "dec",
        ]
        month = lambda: r.choice(months)
        weekday = lambda: r.choice(
            [
                "monday",
                "tuesday",
                "wednesday",
                "thursday",
                "friday",
                "saturday",
                "sunday",
                "mon",
                "tue",
                "wed",
                "thu",
                "fri",
                "sat",
                "sun",
            ]
        )
        unit = lambda: r.choice(
            [
                "minutes",
                "min",
                "mins",
                "hours",
                "hrs",
                "days",
                "weeks",
                "months",
                "minute",
                "hour",
                "hr",
                "h",
                "m",
                "secs",
                "seconds",
            ]
        )
        day = lambda: r.choice(
            [
                f"{month()} {n(1, 29)}{r.choice(['', 'th', 'st', 'rd'])}",
                f"{n(1, 29)} {month()}",
                f"{n(1, 13)}/{n(1, 29)}",
                weekday(),
                month(),
                f"the {n(1, 29)}th",
                r.choice(["new years", "christmas", "easter", "thanksgiving", "halloween", "labor day", "xmas"]),
            ]
        )
        do = lambda: r.choice(DO)
        person = lambda: r.choice(PEOPLE)
        some = lambda: r.choice(
            [
                "a few",
                "a couple",
                "a couple of",
                "couple of",
                "several",
                str(n(2, 90)),
                str(n(2, 90)),
                "two",
                "three",
                "five",
                "ten",
                "half an",
                "an",
                "a",
            ]
        )
        forms = [
            lambda: r.choice(TRAP_TASKS),
            lambda: r.choice(TRAP_TASKS),
            lambda: r.choice(TRAP_TASKS),
            t.trap,
            t.trap,
            t.trap,
            t.trap,
            t.trap,
            t.trap,
            t.trap,
            t.trap,
            lambda: f"{do()} {r.choice(['', 'the ', 'a ', 'my '])}{r.choice(TRAPS)}",
            lambda: f"{do()} {r.choice(TRAPS)}",
            lambda: r.choice(TRAPS),
            lambda: f"{person()} {r.choice(TRAPS)}",
            # Lengths of time, repeats.
            lambda: f"{do()} {thing()} for {some()} {unit()}",
            lambda: f"{do()} {r.choice(['every', 'each', 'once every', 'every other', 'once a', 'twice a', 'every single'])} {r.choice(['few days', 'couple of weeks', 'couple days', 'few hours', 'morning', 'evening', 'night', 'afternoon', 'weekend', 'month', weekday(), 'few weeks', '2 weeks', '3 days', 'few months', 'day', 'week', 'hour'])}",
            lambda: f"{some()} {unit()} {thing()}",
            lambda: f"{do()} {thing()} {r.choice(['lasting', 'taking', 'about', 'around', 'max', 'at least', 'at most', 'up to', 'over'])} {some()} {unit()}",
            lambda: f"{r.choice(['a', 'the', ''])} {n(2, 90)} {r.choice(['minute', 'min', 'hour', 'day', 'week', 'month', 'hr'])} {thing()}",
            lambda: f"{do()} {thing()} {r.choice(['on mondays', 'tuesdays and thursdays', 'on weekends', 'weekends', 'weekly', 'nightly', 'in the mornings', 'evenings', 'most mornings', 'at nights', 'on weekdays', 'daily', 'every ' + weekday(), 'every morning', 'every evening', 'monthly', 'whenever', 'mornings', 'all night', 'all morning', 'all weekend', 'all week', 'all day'])}",
            # Vague.
            lambda: f"{do()} {thing()} {r.choice(['soon', 'asap', 'later', 'someday', 'sometime', 'sooner or later', 'soonish', 'one day', 'eventually', 'at some point', 'when possible', 'in a bit', 'in a while', 'later on', 'some other time', 'before too long', 'early', 'sometime soon', 'a bit later', 'very soon', 'real soon', 'at the latest', 'maybe later', 'as soon as possible', 'ASAP', 'right away, asap', 'pretty soon', 'or later', 'one of these days', 'some day soon', 'in due course', 'when I have a few minutes', 'if theres time later', 'whenever', 'in a jiffy', 'early if possible', 'earlier than last time', 'too late'])}",
            lambda: f"{r.choice(['soon', 'asap', 'later', 'someday', 'ASAP:', 'asap -', 'later:', 'soon:', 'maybe', 'may', 'maybe later', 'early', 'one of these mornings'])} {do()} {thing()}",
            lambda: f"{r.choice(['maybe', 'may', 'perhaps maybe', 'might', 'we may', 'it may', 'this may', 'you may', 'they may', 'that may', 'may i', 'may or may not'])} {do()} {thing()}",
            # Numbers.
            lambda: f"{do()} {r.choice(['chapter', 'page', 'section', 'step', 'unit', 'part', 'lesson', 'room', 'item', 'issue', 'version', 'exercise', 'task', 'level', 'season', 'volume', 'table', 'figure', 'question', 'apt', 'suite', 'exit', 'rm', 'problem', 'no.', 'number', 'bus', 'flight', 'gate', 'lane'])} {r.choice([str(n()), f'{n()}/{n()}', f'{n()}-{n()}', f'{n(1,9)}.{n(0,9)}', f'{n(1,20)}a', f'{n(1,20)}p'])} {r.choice(['', 'of ' + thing(), 'for ' + person(), 'in the ' + noun()])}",
            lambda: f"{do()} {n(1, 20)}/{n(2, 20)} {r.choice(['cup', 'tsp', 'tbsp', 'inch', 'of', 'of the', 'done', 'price', 'scale', 'full', 'lb', 'mile', 'teaspoon', 'split', 'ratio', 'score', 'time', 'size', 'finished', 'complete', 'wrench', 'bolt', 'in'])} {thing()}",
            lambda: f"{do()} {thing()} {n(1, 13)}/{n(2, 32)} {r.choice(['done', 'complete', 'full', 'read', 'left', 'paid', 'packed', 'pages', 'boxes', 'items', 'steps', 'parts', 'inch', 'cup', 'screws', 'chance', 'scale', 'odds'])}",
            lambda: f"{thing()} {r.choice(['part', 'pt', 'step', 'page', 'week', 'day', 'chapter', 'episode', 'ep', 'round', 'game', 'set', 'disc', 'box', 'lesson'])} {n(1, 12)}/{n(2, 31)}",
            lambda: f"{do()} the {n(1, 31)}{r.choice(['th', 'st', 'nd', 'rd'])} {r.choice(['floor', 'draft', 'chapter', 'edition', 'page', 'version', 'time', 'copy', 'item', 'one', 'grade', 'house', 'row', 'attempt', 'hole', 'street', 'avenue', 'century', 'amendment', 'slide', 'level', 'episode', 'season', 'birthday', 'anniversary', 'party', 'step', 'wheel', 'place', 'prize', noun(), noun(), noun(), noun()])}",
            lambda: f"{do()} {r.choice(['around', 'about', 'at about', 'over', 'about a', 'around a'])} {r.choice([str(n()), str(n()), str(n(100, 2000)), 'five', 'ten', 'twenty', 'a dozen', 'a hundred'])} {r.choice(['people', 'guests', 'kg', 'dollars', 'pages', 'things', 'chairs', 'bucks', 'euros', 'lbs', 'cookies', 'boxes', 'copies', 'miles', 'km', 'liters', 'percent', 'units', 'kids', 'words', 'items', 'reps', 'emails', noun() + 's', noun() + 's', '€', '%', 'usd', 'steps'])}",
            lambda: f"{do()} {thing()} {r.choice(['around', 'about'])} {r.choice(['the', 'a', 'my', 'our', 'town', 'this', 'his', 'her', 'every'])} {noun()}",
            lambda: f"{r.choice(['around', 'about', 'early', 'in a', 'end of', 'by the', 'before the', 'after the'])} {noun()} {noun()}",
            lambda: f"{do()} {r.choice([some()])} {noun()}s",
            lambda: f"{do()} {thing()} {r.choice(['in a', 'in an', 'in a few', 'in a couple of', 'in some', 'end of', 'at the end of the', 'from the end of the', 'until the end of the'])} {noun()}",
            # Months, days and holidays that are names or adjectives.
            lambda: f"{do()} {r.choice(['the ', '', 'our ', 'last '])}{month()}{r.choice(['', chr(39) + 's', ' ' + str(n(2019, 2026))])} {r.choice(['invoice', 'report', 'budget', 'numbers', 'newsletter', 'rent', 'statement', 'photos', 'bill', 'issue', 'menu', 'sales', 'minutes', 'payroll', 'schedule', 'expenses', 'hours', 'timesheet', 'figures', 'receipts', 'magazine', 'edition', 'results', 'plan', 'slides', 'data', 'paycheck', 'bank statement', 'birthdays', 'calendar', 'totals', 'reading', 'meter reading', 'bonus', 'update', 'edition'])}",
            lambda: f"{do()} {r.choice(['christmas', 'thanksgiving', 'new year', 'new years', 'xmas and new year', 'halloween and christmas', 'easter and christmas', 'weekend', 'morning', 'evening', 'night', 'afternoon', 'sunday', 'friday', 'saturday', 'monday', 'midnight', 'noon', 'early', 'late night', 'next week' + chr(39) + 's', 'next month' + chr(39) + 's', 'this week' + chr(39) + 's', 'tomorrow' + chr(39) + 's', 'tonight' + chr(39) + 's', 'end of year', 'end of term', 'end of season', 'weekend', 'christmas', 'thanksgiving', 'weekend', 'christmas eve', 'new year' + chr(39) + 's eve'])} {r.choice(['list', 'cards', 'tree', 'lights', 'sweater', 'playlist', 'menu', 'recipes', 'decorations', 'party ideas', 'outfit', 'budget', 'plans', 'dress', 'bag', 'cream', 'routine', 'paper', 'movie', 'shift', 'market', 'dinner recipe', 'food', 'gifts list', 'stamps', 'jumper', 'pajamas', 'lights', 'school', 'show', 'news', 'class', 'agenda', 'review', 'sale', 'resolutions', 'card', 'song', 'blend', 'club', 'crew', 'email template', noun(), noun()])}",
            lambda: f"{r.choice(VERBS)} {r.choice(['April', 'May', 'June', 'Augusta', 'Jan', 'Juno', 'August', 'Mara', 'Marta', 'Mario', 'Octavia', 'Dec', 'Decker', 'Janine', 'Marge', 'Julio', 'Apryl', 'Mayra', 'Marlon', 'Junior', 'Jana', 'Sunday', 'Wednesday', 'Noel', 'Dawn', 'Marco', 'Julian', 'Janice', 'Margot', 'Juliet'])} {r.choice(['', '', 'about ' + thing(), 'and ' + person(), 're ' + thing(), 'back', 'for ' + thing()])}",
            lambda: f"{r.choice(['watch', 'read', 'listen to', 'stream', 'rent', 'download', 'buy', 'review', 'order', 'return'])} {r.choice(['The ', 'A ', '', ''])}{r.choice(['March', 'May', 'Friday Night', 'Saturday Night', 'Midnight', 'Morning', 'October', 'November', 'December', 'Sunday', 'Monday', 'Early', 'Good Night', 'Late Night', 'Tomorrow', 'Weekend', 'April', 'January', 'Evening', 'Autumn', 'New Year', 'Christmas', 'Afternoon'])} {noun().title()}",
            lambda: f"{r.choice(['christmas', 'thanksgiving', 'new year', 'new years', 'xmas', 'halloween', 'easter', 'valentines day', 'christmas eve', 'new years eve', 'Christmas', 'Thanksgiving', 'July 4th', 'memorial day'])} {thing()} {r.choice(['', '', 'for ' + person(), 'to ' + person(), 'and ' + thing(), 'from ' + person(), 'ideas', 'list'])}",
            lambda: f"{thing()} {r.choice(['is', 'are', 'now', 'runs', 'happens', 'meets', 'repeats'])} {r.choice(['every other', 'every', 'each', 'every 2nd', 'every second', 'every third', 'most'])} {weekday()}{r.choice(['', '', ' now', ' at noon', ', tell ' + person(), ' morning', ' evening', 's'])}",
            lambda: f"{r.choice(['every', 'each', 'every other', 'most'])} {weekday()}{r.choice(['', ' morning', ' night', ' evening'])} {do()} {thing()}",
            # The past.
            lambda: f"{do()} {thing()} {r.choice(['from last week', 'from last month', 'since ' + month(), 'from ' + month(), 'from last night', 'from this morning' + chr(39) + 's call', 'from ' + str(n(2000, 2026)), 'from last ' + month(), 'since christmas', 'left over from thanksgiving', 'from earlier', 'we got last christmas', 'from the ' + str(n(2, 30)) + 'th floor', 'from earlier this week', 'since the new year', 'from last christmas'])}",
            # At last, numbers with a or p behind.
            lambda: f"{do()} {r.choice(['seat', 'room', 'gate', 'locker', 'apt', 'apartment', 'flat', 'unit', 'exhibit', 'appendix', 'form', 'row', 'class', 'size', 'grade', 'plug', 'bay', 'platform', 'ch', 'building', 'question', 'table', 'item'])} {n(1, 30)}{r.choice(['a', ' a', 'A', 'p', 'a and ' + str(n(1, 30)) + 'b'])}",
            lambda: f"{do()} {n(1, 30)}{r.choice(['a', ' a', 'p', ' p', 'A', 'P'])} {r.choice(['fuse', 'batteries', 'charger', 'cable', 'breaker', 'stamps', 'coins', 'plug', 'adapter', 'connector', 'video', 'rating', 'team', 'each', 'day', 'pop', 'piece', 'week', 'person'])}",
            lambda: f"{do()} {r.choice(['receipt', 'photos', 'notes', 'invoice', 'charge', 'email', 'pictures', 'minutes', 'recording', 'statement', 'payment', 'order', 'game', 'blood work', 'results'])} {r.choice(['from', 'of', 'dated', 'since', 'made on', 'taken on'])} {n(1, 13)}/{n(1, 31)}",
            lambda: f"{do()} {thing()} {r.choice(['', 'on ', 'by '])}the {weekday()} {r.choice(['before', 'after'])} {r.choice(['thanksgiving', 'christmas', 'easter', 'labor day', 'payday', 'the wedding', 'graduation', 'the party', 'new years'])}",
            lambda: f"{do()} {thing()} {r.choice(['', 'for ', 'before ', 'by '])}{r.choice(['lunar new year', 'chinese new year', 'orthodox easter', 'ramadan', 'diwali', 'hanukkah', 'passover', 'rosh hashanah', 'persian new year', 'orthodox christmas', 'lent', 'fiscal new year'])}",
            lambda: f"{do()} {thing()} {r.choice(['every', 'each', 'the', 'on every'])} {r.choice(['first', 'second', 'last', '2nd', '3rd', '1st'])} {weekday()} {r.choice(['of each month', 'of every month', 'monthly', 'each month', 'every month'])}",
            lambda: f"{r.choice(['last', 'the last', 'last'])} {weekday()} {thing()}",
            lambda: f"{do()} {r.choice(['the ', ''])}{r.choice(['16', '8', '20', '5', '4', '3', '12', '2'])}/{r.choice(['8', '4', '2', '3', '5', '7', '1', '20'])} {r.choice(['fasting', 'fast', 'diet', 'split', 'time', 'beat', 'rhythm', 'rule', 'plan', 'schedule', 'mix', 'model', 'method', 'box', 'screen', 'guitar part', 'bar', 'measure', 'ratio', 'blend', 'rating', 'review', 'stars'])} {r.choice(['', 'thing', 'again', 'with ' + person()])}",
            lambda: f"{n(1, 30)}{r.choice(['a', 'b', 'p', 'A'])} {r.choice(['on the seating plan', 'in the catalog', 'on the map', 'on the form', 'on the list', 'on the floor plan', 'is empty', 'needs a new lock', 'is broken', 'and ' + str(n(1, 30)) + 'b', 'has no key', 'wants a refund'])}{r.choice(['', ', tell ' + person(), ', ask ' + person()])}",
            lambda: f"{do()} {thing()}, {r.choice(['not urgent', 'low priority', 'no rush', 'whenever'])} {r.choice(['later', 'maybe', 'someday', 'asap', 'soon', ''])}",
            lambda: f"{do()} {thing()} {r.choice(['that expires', 'which ends', 'valid until', 'expiring', 'made', 'born', 'dated', 'printed', 'from'])} {r.choice([str(n(1, 13)) + '/' + str(n(1, 29)) + '/' + str(n(2028, 2040)), month() + ' ' + str(n(1990, 2022)), month() + ' ' + str(n(2028, 2040)), str(n(1, 29)) + ' ' + month() + ' ' + str(n(1950, 2020)), str(n(1, 13)) + '/' + str(n(1, 29)) + '/' + str(n(1950, 2020))])}",
            # What happened, lasts or happens at times.
            lambda: f"{do()} {thing()} {r.choice(['we', 'I', 'they', person()])} {r.choice(['saw', 'had', 'found', 'got', 'made', 'lost', 'bought', 'ordered', 'sent', 'paid for', 'broke', 'reported', 'talked about', 'shot', 'recorded'])} {r.choice(['on', 'in', 'after', 'before', 'around', 'back on'])} {day()}",
            lambda: f"{thing()} {r.choice(['went missing', 'broke', 'was moved', 'was fixed', 'came back', 'died', 'started leaking', 'arrived', 'was delivered', 'got lost', 'opened'])} {r.choice(['on', 'after', 'before', 'around', ''])} {day()}",
            lambda: f"{do()} {r.choice(['minutes', 'notes', 'invoice', 'slides', 'recording', 'agenda', 'photos', 'transcript', 'receipt', 'summary', 'video', 'chart'])} {r.choice(['of', 'from', 'for'])} {r.choice(['the', 'our', ''])} {day()} {r.choice(['board', 'team', 'budget', 'parent', 'staff', 'client', noun()])} {r.choice(['meeting', 'call', 'hearing', 'session', 'visit', 'class', 'game', 'party'])}",
            lambda: f"{do()} {thing()} for {r.choice(['', 'the '])}{weekday()} {r.choice(['crew', 'shift', 'team', 'group', 'class', 'regulars', 'league', 'choir', 'ladies', 'staff'])}",
            lambda: f"{r.choice(['rest days', 'closed', 'open', 'days off', 'trash days', 'classes', 'shifts', 'office hours', 'practice', 'hours', thing()])}: {weekday()} {r.choice(['and', 'to', '-', 'thru', '&', '/', 'or'])} {weekday()}",
            lambda: f"{thing()} {r.choice(['dies', 'cuts out', 'goes bad', 'shuts off', 'logs out', 'gets hot', 'stops', 'resets', 'melts', 'spoils', 'expires', 'times out', 'drops', 'beeps'])} {r.choice(['after', 'within', 'every', 'after just', 'after only'])} {r.choice(['', 'about', 'around', 'roughly'])} {some()} {unit()}",
            lambda: f"{do()} {thing()} {some()} {r.choice(['nights', 'days', 'evenings', 'times', 'mornings', 'hours', 'weekends', 'x'])} {r.choice(['a', 'per', 'each', 'every'])} {r.choice(['week', 'month', 'year', 'day'])}",
            lambda: f"{r.choice(['stop', 'quit', 'avoid', 'less', 'no more', 'cut down on', 'no', 'more'])} {thing()} {r.choice(['in the', 'on', 'late', ''])} {r.choice(['mornings', 'afternoons', 'evenings', 'weeknights', 'weekends', 'mondays', 'sundays'])}",
            lambda: f"{do()} {thing()} {r.choice(['soon ish', 'soon-ish', 'soonish', 'some time', 'one day soon', 'at some stage', 'sometime or other', 'when able', 'this year sometime', 'down the road'])}",
            lambda: f"{do()} {r.choice(['office', 'section', 'clause', 'para', 'line', 'room', 'rule', 'fig', 'lab', 'grade', 'release', 'ver', 'pt'])} {n(1, 13)}.{n(1, 60):02}",
            lambda: f"{do()} {r.choice(PEOPLE)} {r.choice(['&', 'and', 'et al'])} {r.choice(['May', 'March', 'June', 'August', noun().title()])} {n(1950, 2024)} {r.choice(['(', '', ', '])}{r.choice(['ch', 'ch.', 'pp', 'pp.', 'p', 'vol', 'secs'])} {n(1, 12)}{r.choice(['-', chr(8211), ' to '])}{n(2, 31)}{r.choice([')', '', ''])}",
            lambda: f"{do()} {n(1, 5)} {r.choice(['cup', 'cups', 'tsp', 'tbsp', 'lb', 'oz'])} {noun()} {r.choice(['for', 'to', 'instead of', 'down to'])} {n(1, 8)}/{n(2, 9)}",
        ]
        text = r.choice(forms)()
        if r.random() < 0.08:
            text += ", " + t.aside()
        if r.random() < 0.1:
            text += " " + r.choice(PLACES)
        return re.sub(" +", " ", text).strip()

    def text(self):
        if self.r.random() < 0.4:
            text = self.written.undated()
            return text if self.r.random() < 0.92 else text + ", " + self.titles.aside()
        if self.r.random() >= 0.42:
            return self.made()
        line = self.r.choice(self.real)
        words = line.split(" ")
        if len(words) > 5 and self.r.random() < 0.4:
            start = self.r.randrange(len(words) - 4)
            line = " ".join(words[start : start + self.r.randrange(4, 12)])
        return line
