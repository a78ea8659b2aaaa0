"""The short form of the long run: what the program holds after a few rounds of everything is what it held before, and
the time that it shows is the clock's. First that the counting counts."""

import unittest

import long_run
import operators_e2e

MAKER = "Pelvaro.Maker"
# What rises with each kind of object that another program makes.
RISES = {
    "brush": ("gdi",), "font": ("gdi",), "context": ("gdi",), "bitmap": ("gdi",), "event": ("handles",),
    "menu": ("user",), "icon": ("user", "gdi"), "window": ("user", "windows"),
}
COUNTS = ("handles", "threads", "gdi", "windows", "user")


class Counting(operators_e2e.Operators):
    phones = None

    def test_every_object_of_another_program_is_counted(self):
        counter, maker = long_run.Resources(self.session), long_run.Resources(self.session, MAKER)
        maker.call("make", "brush", 0)  # it has its window by now
        for kind, rising in RISES.items():
            maker.call("make", kind, 1)  # what comes with the first of its kind
            maker.call("make", kind, 0)
            before = counter.count(MAKER)
            for number in (100, 7, 0):
                maker.call("make", kind, number)
                found = counter.count(MAKER)
                with self.subTest(kind=kind, number=number):
                    self.assertEqual({name: found[name] - before[name] for name in COUNTS},
                                     {name: number if name in rising else 0 for name in COUNTS})
        before = counter.count(MAKER)["private"]
        maker.call("make", "kilobyte", 5000)
        self.assertAlmostEqual(counter.count(MAKER)["private"] - before, 5000, delta=500)


class Rounds(long_run.Use):
    def test_a_few_rounds_leave_nothing_behind(self):
        self.begin_using()
        for _ in range(2):
            self.use()
        after, objects = self.count(), lambda found: {name: found[name] for name in COUNTS}
        for _ in range(5):  # what Wine keeps for later comes once, what is lost comes every time
            before = after
            for _ in range(2):
                self.use()
            after = self.count()
            if objects(after) == objects(before):
                break
        self.assertEqual(objects(after), objects(before))
        self.assertLessEqual(after["private"] - before["private"], 512)
        self.assert_in_time()


if __name__ == "__main__":
    unittest.main()
