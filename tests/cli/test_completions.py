"""What follows from completing tasks: statistics, and once the wish for feedback."""

import unittest

from quillo_command import CommandTest

COMPLETIONS = "Quillo.review.lifetimeCompletions"
PENDING = "Quillo.linux.review.pending"


class Completions(CommandTest):
    def complete(self, count):
        for number in range(count):
            self.done("add", f"task {number}")
            self.done("done", "1")

    def test_the_fifth_leads_to_one_request_for_feedback(self):
        self.complete(4)
        self.assertNotIn(PENDING, self.quillo.preferences())
        self.complete(1)
        self.assertEqual(self.quillo.preferences()[PENDING], ("boolean", 1))
        self.assertEqual(self.quillo.preferences()[COMPLETIONS], ("integer", 5))
        # As one who has asked would leave it: nobody is asked twice.
        connection = self.quillo.connect()
        connection.execute("DELETE FROM preferences WHERE key = ?", (PENDING,))
        connection.close()
        self.complete(5)
        self.assertNotIn(PENDING, self.quillo.preferences())
        self.assertEqual(self.quillo.preferences()[COMPLETIONS], ("integer", 10))

    def test_all_are_counted_whoever_does_them(self):
        """Commands by themselves and, where there is one, a desktop program between them."""
        for _ in range(3):
            self.complete(2)
            self.quillo.let_go()
        self.assertEqual(self.done("stats", "--json").json["allTime"], 6)


if __name__ == "__main__":
    unittest.main()
