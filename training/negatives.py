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
        holiday = lambda: r.choice(
            [
                "christmas",
                "thanksgiving",
                "easter",
                "halloween",
                "april fools",
                "mother's day",
                "mothers day",
                "father's day",
                "fathers day",
                "valentines day",
                "valentine's day",
                "new year's eve",
                "new years",
                "st patricks day",
                "st patrick's day",
                "labor day",
                "memorial day",
                "4th of july",
                "july 4th",
                "groundhog day",
                "boxing day",
                "black friday",
                "good friday",
                "cyber monday",
                "christmas eve",
                "mlk day",
                "palm sunday",
                "ash wednesday",
                "earth day",
                "xmas",
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
        # People say these in many ways, so they come twice as often as the others.
        often = [
            # What happens after some time, or has not for as long.
            lambda: f"{do()} {thing()}{r.choice([', it', ', the ' + noun(), ' that', ', mine', ', she', ' why the ' + noun(), ' if it', ', which'])} {r.choice(['hurts', 'stops', 'sleeps', 'quits', 'dies', 'fades', 'was gone', 'shut down', 'smells', 'froze', 'got cold', 'wears off', 'gets boring', 'crashed', 'peaks', 'gave up', 'was over', 'leaks'])} {r.choice(['after', 'within', 'in', 'in under', 'in about', 'after about', 'around'])} {some()} {unit()}",
            lambda: f"{do()} {thing()}, {r.choice(['it', 'that one', 'the ' + noun(), person(), 'we'])} {r.choice(['has not been', 'hasnt been', 'havent been', 'not been', 'has been', 'were not'])} {r.choice(['touched', 'cleaned', 'paid', 'in touch', 'there', 'to the ' + noun(), 'used', 'opened', 'broken', 'away'])} {r.choice(['in', 'for', 'in about', 'for about', 'in over', 'for nearly'])} {r.choice(['a year', 'a month', 'a week', 'a few weeks', 'years', 'a couple of months', str(n(2, 40)) + ' days', 'a few days', 'ages', 'half a year'])}",
            lambda: f"{do()} {r.choice(['', 'the ', 'my ', 'set ', 'within ', 'the story set ', 'think of '])}{r.choice([chr(39) + 'a year from now' + chr(39), 'five years from now', 'a year from now', 'ten years from now', 'years from now', 'two years from now', 'a week from now', 'a month from now'])} {r.choice(['joke', 'essay', 'letter', 'question', 'plan', 'list', 'vision', 'part', 'line', 'forecast', 'song', noun()])}{r.choice(['', ' for ' + person(), '?', ' again'])}",
            lambda: f"{do()} {thing()} {r.choice(['between', 'betw', 'btwn', 'only from', 'open from', 'closed from', 'which runs', 'allowed'])} {n(1, 13)}{r.choice(['', ' p', 'pm', 'a', ' am', 'p', ' a'])} {r.choice(['and', '-', 'to', '&', 'till'])} {n(1, 13)}{r.choice([' a', 'pm', 'p', ' am', ' p'])}{r.choice(['', ' every night', ' on weekdays', ' as a rule', ' is too early', ' is the rush', ' usually', ' hours', ' crowd'])}",
            lambda: f"{do()} {thing()}, {person()} {r.choice(['got one', 'asked for it', 'said so', 'noticed', 'broke it', 'told me', 'complained', 'called', 'was there', 'wanted it', 'left'])} {r.choice(['first thing', 'first thing when she joined', 'early', 'the other night', 'around noon', 'in the morning', 'on ' + weekday(), 'last ' + weekday(), 'around ' + str(n(1, 13)), 'at noon', 'earlier today', 'late last night', 'this morning', 'at the end of the night', 'on the ' + str(n(4, 21)) + 'th'])}",
            # Holidays in names, and numbers with a or p before what they count.
            lambda: f"{r.choice([do() + ' ', do() + ' ', do() + ' ', '', 'find ', 'buy ', 'get ', 'clean up ', 'clean up after ', 'prepare for ', 'shop for ', 'ideas for ', 'help with ', 'recover from ', 'food for '])}{r.choice(['', '', 'the ', 'a ', 'some '])}{holiday()} {r.choice(['dinner', 'party', 'mess', 'ideas', 'joke ideas', 'card', 'card designs', 'cards', 'mug', 'gift', 'gift ideas', 'menu', 'sale flyer', 'hat', 'playlist', 'costume', 'outfit', 'candy', 'decorations', 'recipe', 'dress', 'pranks', 'props', 'speech', 'leftovers', 'shirt', 'banner', 'cookies', 'photos', 'stickers', 'deals', 'concert program', 'craft supplies', 'sheet music', 'buns', 'special', 'movie list', noun(), noun() + ' ' + noun()])}{r.choice(['', '', '', ' for ' + person(), ' with ' + person(), '??', ', maybe ' + str(n(2, 9)), ' idea'])}",
            lambda: f"{do()} {r.choice(['', 'the ', 'a '])}{r.choice(['12 days of christmas', 'nightmare before christmas', 'twelve days of christmas', 'days of thanksgiving', 'a charlie brown thanksgiving', 'home for christmas', 'last christmas', 'white christmas', 'blue christmas', 'christmas in july', 'easter parade', 'new years day', 'sunday in the park', 'friday the 13th', 'born on the 4th of july', 'saturday in the park', 'april in paris', 'september morn', 'june is busting out', 'first of may', 'thank god its friday', 'weekend at bernies', 'night at the museum', 'a night at the opera', 'the night before', 'one fine day', 'same time next year', 'next year in jerusalem', 'tomorrow never dies', 'any given sunday', 'month of sundays', 'two weeks notice'])} {r.choice(['sheet music', 'chords', 'dvd', 'poster', 'lyrics', 'on piano', 'script', 'costumes', 'tickets', 'cover', 'album', 'remake', 'ornament', 'mug', 'soundtrack', noun()])}",
            lambda: f"{r.choice(['', do() + ' ', 'find ', 'count '])}{n(1, 13)} {r.choice(['p', 'a', 'P', 'A'])} {r.choice(['quarter coins', 'coins', 'fuses', 'sockets', 'plugs', 'stamps', 'batteries', 'breakers', 'side labels', 'grade eggs', 'row seats', 'pieces', 'adapter', 'lamp'])}{r.choice(['', '', ' for ' + person(), ' from ' + noun()])}",
        ]
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
            *often,
            *often,
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
            lambda: f"{do()} {thing()} {r.choice(['after', 'after about', 'after only', 'after just', 'right after', 'again after'])} {some()} {unit()}{r.choice(['', '', ' of use', ' or so', ' of ' + thing(), ', check it', ' in the oven', ' on air'])}",
            lambda: f"{do()} {thing()}{r.choice(['', ' the', ' is the', ' was the', ', the', ' as the'])} first thing {r.choice(['on an empty stomach', 'they hear', 'you see', 'people ask', 'I do each day', 'he said', 'on the list', 'to fix', 'that comes up', 'customers notice', 'every day', 'on the agenda', 'kids learn', 'we sold', 'that broke', 'to check', 'visitors read', person() + ' says', 'when ' + person() + ' joined', 'each time', 'she did', 'people touch'])}",
            lambda: f"{do()} {thing()} {r.choice(['from', 'we got', 'of', 'that broke', 'since', 'lost'])} {r.choice(['two', 'three', '2', '3', '4', 'a few', 'a couple of', 'several'])} {r.choice(['christmases', 'thanksgivings', 'easters', 'summers', 'sundays', 'saturdays', 'weekends', 'nights', 'mornings', 'mondays', 'winters', 'fridays', 'halloweens'])} {r.choice(['ago', 'back', 'in a row', 'running'])}",
            lambda: f"{do()} {r.choice(['the ', ''])}{r.choice(['shelfmark', 'reel', 'tape', 'file', 'box', 'folio', 'lot', 'bin', 'minutes', 'track', 'psalm', 'verse', 'hymn', 'luke', 'mark', 'john', 'act', 'chord', 'model', 'part no', 'frame', 'shade'])} {r.choice(['', '', 'MS ', 'Add ', 'M', 'P'])}{r.choice([str(n(1, 13)) + '.' + str(n(10, 60)), str(n(1, 13)) + ':' + str(n(10, 60)), str(n(1, 32)) + '-' + str(n(2, 32)), str(n(1, 13)) + r.choice(['a', 'p', ' a'])])}{r.choice(['', ' of tape ' + str(n(1, 9)) + 'a', ' for ' + person(), ' at ' + noun()])}",
            lambda: f"{do()} {r.choice(['letters', 'diary', 'map', 'treaty', 'photos', 'battle', 'minutes', 'ledger', 'census', 'will', 'charter', 'newspaper', 'deed', noun()])} {r.choice(['of', 'from', 'dated', 'for', 'signed'])} {r.choice([f'{n(1, 29)} {month()} {n(1400, 2000)}', f'{month()} {n(1, 29)}, {n(1700, 2000)}', f'{month()} {n(1500, 2000)}', f'easter {n(1500, 2000)}', f'the {n(2, 30)}th of {month()} {n(1600, 2000)}'])}{r.choice(['', '', f' to {month()} {n(1600, 2000)}', f' and {n(1600, 2000)}', ' for ' + person()])}",
            lambda: f"{do()} {r.choice(['3/4', '1/2', '7/8', '1/4', '5/8', '2/3'])} {r.choice(['length', 'sleeve', 'sleeves', 'zip', 'height', 'moon', 'view', 'cut', 'round', 'wrench', 'ply', 'turn', 'circle', 'crown', 'ton', 'bath', 'pants', 'marathon', 'size violin', 'face portrait'])} {thing()}",
            lambda: f"{r.choice(['3/4', '1/2', '7/8', '1/4', '5/8', '2/3'])} {r.choice(['length', 'sleeve', 'sleeves', 'zip', 'height', 'view', 'cut', 'wrench', 'ply', 'turn', 'ton', 'pants', 'size violin', 'inch', 'cup'])} {noun()} for {person()}",
            lambda: f"{do()} {r.choice(['what time', 'when', 'how early', 'how late', 'since when', 'what hour'])} {r.choice(['does', 'do', 'did', 'is', 'are'])} {thing()} {r.choice(['start', 'open', 'end', 'begin', 'close', 'happen', 'come on', 'run'])} {r.choice(['in', 'on', 'around', 'during', 'after', 'by'])} {day()}{r.choice(['', ', research', '?', ', look up', ' usually', ' mornings'])}",
            # Days, holidays and parts of the day that say which one is meant.
            lambda: f"{do()} {thing()} {r.choice(['off', 'from', 'with', 'to', 'for', 'of', 'by', 'on', 'in', 'via'])} {r.choice(['the', 'our', 'a', 'my', 'that'])} {r.choice(['weekend', 'night', 'morning', 'evening', 'afternoon', 'midnight', 'early', 'christmas', 'thanksgiving', 'easter', 'halloween', 'new year', weekday(), weekday(), month()])} {r.choice(['sister', 'nurse', 'team', 'warrior', 'guy', 'lady', 'crowd', 'driver', 'doorman', 'desk', 'boss', 'rota', 'edition', 'shirt', 'window', 'bus', 'girls', 'bunch', 'sitter', noun(), noun(), noun()])}",
            lambda: f"{r.choice(['thank', 'pay', 'tip', 'email', 'ask', 'fire', 'praise', 'brief', 'feed', 'hire'])} the {r.choice(['weekend', 'night', 'morning', 'evening', 'early', 'late', 'christmas', 'summer', weekday()])} {r.choice(['on-call team', 'crew', 'shift', 'staff', 'nurses', 'porter', 'warriors', 'helpers', 'cleaner', 'cat sitter', 'volunteers', 'guard', 'regulars'])}{r.choice(['', '', ' again', ' for ' + thing()])}",
            lambda: f"{r.choice(['start', 'price', 'sell', 'list', 'cap', 'set', 'keep', 'put', 'freeze', 'stop bidding on', 'offer', 'mark'])} {thing()} {r.choice(['at', 'around', 'at about', 'at under', 'at most'])} {n(2, 100)}{r.choice(['', '', ' each', ' a piece', ' apiece', ' bucks', ' tops', ' or less'])}",
            lambda: f"{r.choice(['in', 'on', 'for', 'only in'])} {r.choice(['a', 'any', 'every'])} {r.choice(['month', 'week', 'year', 'day', 'weekend', 'night'])} {r.choice(['with', 'when', 'where', 'that has', 'without'])} {r.choice([str(n(2, 6)) + ' ' + weekday() + 's', noun(), 'no ' + noun(), 'rain', person() + ' is away', 'two paydays', 'a full moon'])}, {do()} {thing()}",
            lambda: f"{r.choice([thing(), noun() + ' ' + noun()])} {r.choice(['christmas', 'thanksgiving', 'sunday', 'friday', 'october', 'may', 'midnight', 'july', 'weekend'])} {r.choice(['on piano', 'on guitar', 'the musical', 'on vinyl', 'on dvd', 'chords', 'sheet music', 'lyrics', 'soundtrack', 'cover', 'remix', 'karaoke'])}{r.choice(['', ', page ' + str(n(2, 99)), ', transpose to ' + r.choice('ABCDEFG'), ' for ' + person()])}",
            lambda: f"{day()}, {noun()} {noun()} {r.choice(['-', '–', ':'])} {r.choice(['transpose to', 'learn in', 'chords in', 'practise in', 'tune down to', 'sing it in'])} {r.choice('ABCDEFG')}{r.choice(['', ' minor', 'm', ' flat'])}",
            lambda: f"{r.choice(['tally', 'find out', 'ask', 'check', 'count', 'poll', 'see', 'list'])} {r.choice(['how many want', 'who wants', 'who does', 'how many do', 'if anyone does', 'who is ok with', 'which of us get'])} {thing()} {r.choice(['on', 'by', 'over', 'at'])} {r.choice([weekday() + 's', 'weekends', 'nights', 'mornings', 'the weekend', 'christmas', 'noon', 'night'])}",
            # How long something takes.
            lambda: f"{r.choice(['', do() + ' ', 'find '])}{thing()} {r.choice(['in', 'in about', 'in under', 'in just', 'within'])} {some()} {unit()} {r.choice(['of', 'of free time', 'worth of', 'flat', 'or less', 'of ' + thing(), 'of logs', 'plan', 'blog', 'book', 'challenge', 'app', 'recipe', 'program', 'course', 'video', 'article', 'guide', 'or two maybe', 'trick'])}{r.choice(['', '', ' for ' + person(), ', ' + do() + ' ' + person()])}",
            lambda: f"in {some()} {unit()} {r.choice(['of', 'worth of', 'flat', 'or less', 'or two maybe', 'or so maybe', 'of free time,', 'of logs'])} {r.choice(['', do() + ' '])}{thing()}",
            lambda: f"{r.choice(['', 'buy ', 'find ', 'ask about ', 'look up '])}{thing()} {r.choice(['', 'that ', 'which ', 'it '])}{r.choice(['sprouts', 'dries', 'heals', 'ships', 'cures', 'rises', 'melts', 'expires', 'fades', 'repeats', 'sets', 'hardens', 'goes off', 'arrives', 'hatches', 'ripens', 'boils', 'charges', 'pays off', 'works', 'is done', 'is over'])} {r.choice(['in', 'in about', 'in under', 'within', 'in only'])} {some()} {unit()}{r.choice(['', '?', ', type of ' + noun(), ', right?', ' or so', ', which one', ' they say', ' ' + noun()])}",
            lambda: f"{r.choice(['count', 'how many', 'number of', 'calendar of', 'chart of'])} {r.choice(['days', 'weeks', 'sleeps', 'paydays', 'mondays', 'weekends'])} {r.choice(['until', 'till', 'to', 'before', 'since', 'between now and'])} {day()}{r.choice(['', '?', ' for ' + noun(), ' for the kids', ' chart'])}",
            lambda: f"{do()} {r.choice(['row', 'rows', 'sec', 'section', 'block', 'aisle', 'coach', 'car', 'hall', 'bldg'])} {r.choice('abcdefghjklmnrst')}, {r.choice(['', 'seat ', 'seats ', 'no ', 'bay '])}{n(1, 31)}{r.choice(['a', 'p', '', '-' + str(n(2, 31)), ' & ' + str(n(2, 31))])}{r.choice(['', ', ' + do() + ' ' + person(), ' ' + noun()])}",
            lambda: f"{r.choice(['sat', 'waited', 'sat around', 'sun', 'wed', 'may'])} {r.choice([str(n(2, 9)) + ' hrs', 'there', 'for ' + str(n(2, 50)) + ' min', 'all day', 'two hours', 'through', 'dried', 'block', 'screen', 'planner', 'not', 'or may not', 'need'])} {r.choice(['in', 'at', 'for', 'with', 'of'])} {thing()}, {do()} {person()}",
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
