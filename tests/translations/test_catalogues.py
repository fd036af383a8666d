"""The catalogues in translations/ beside what the sources say.

The environment names the tools: LUPDATE, which collects the texts of the sources, and QUILLO_ROOT, where these are.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(os.environ["QUILLO_ROOT"])

# What the sources say for another platform, and what is said here instead.
HERE = {
    "Quick Add… (⌃⌥⌘T)": "Quick Add… (Ctrl+Alt+Super+T)",
    "⌃⌥⌘T": "Ctrl+Alt+Super+T",
    "Quillo %1 (%2) on macOS": "Quillo %1 (%2) on Linux",
    "Sync via iCloud": "Sync between computers",
    "Keeps your list in sync across your Macs.": "Keeps your list in sync across your computers.",
    "Tiny, fast todo list that lives in your menu bar.": "Tiny, fast todo list that lives in your status bar.",
    "Counts completions, streaks, and personal records. Stays on this Mac.": (
        "Counts completions, streaks, and personal records. Stays on this computer."
    ),
    "Thanks for using Quillo.\nMade with care for the menu bar power user.": (
        "Thanks for using Quillo.\nMade with care for the status bar power user."
    ),
}
ELSEWHERE = re.compile(r"iCloud|\bMacs?\b|macOS|[Mm]enu bar|[⌃⌥⌘⇧]")
PLACEHOLDER = re.compile(r"%(?:\d|n|lld)")


def texts(path):
    """{(context, source): its translations, one for each form, None where one is missing}, and which have forms."""
    found, counted = {}, set()
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            key = context.findtext("name"), message.findtext("source")
            translation = message.find("translation")
            finished = translation is not None and translation.get("type") is None
            if message.get("numerus") == "yes":
                counted.add(key)
                forms = [form.text for form in translation.iter("numerusform")]
            else:
                forms = [translation.text if translation is not None else None]
            found[key] = [form if finished else None for form in forms]
    return found, counted


class Catalogues(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            collected = pathlib.Path(folder) / "collected.ts"
            subprocess.run(
                [os.environ["LUPDATE"], "-locations", "none", ROOT / "src", "-ts", collected, "-target-language", "de"],
                check=True,
                capture_output=True,
            )
            found, cls.counted = texts(collected)
            cls.sources = set(found)

    def catalogue(self, language):
        return texts(ROOT / "translations" / f"quillo_{language}.ts")[0]

    def test_the_sources_have_texts(self):
        self.assertGreater(len(self.sources), 150)
        for wanted in (("PopoverHeader", "%lld active"), ("CompletedBar", "%lld done")):
            self.assertIn(wanted, self.counted)

    def test_german_is_complete(self):
        german = self.catalogue("de")
        self.assertEqual(self.sources - set(german), set(), "not in the catalogue")
        self.assertEqual(set(german) - self.sources, set(), "not in the sources any more")
        for (context, source), forms in german.items():
            with self.subTest(source, context=context):
                self.assertEqual(len(forms), 2 if (context, source) in self.counted else 1)
                for form in forms:
                    self.assertTrue(form, "not translated")
                    self.assertEqual(sorted(PLACEHOLDER.findall(form)), sorted(PLACEHOLDER.findall(source)))
                    self.assertNotRegex(form, ELSEWHERE)
                    self.assertEqual(form[-1].isspace(), source[-1].isspace(), "what follows it stands apart")

    def test_english_says_what_is_here(self):
        english = self.catalogue("en")
        self.assertEqual(set(english) - self.sources, set(), "not in the sources")
        self.assertEqual({source: form for (_, source), (form,) in english.items()}, HERE)

    def test_nothing_names_what_is_elsewhere(self):
        """A text of the sources that does has another in the English catalogue."""
        english = self.catalogue("en")
        for context, source in self.sources:
            if ELSEWHERE.search(source):
                with self.subTest(source, context=context):
                    (form,) = english[context, source]
                    self.assertNotRegex(form, ELSEWHERE)


if __name__ == "__main__":
    unittest.main()
