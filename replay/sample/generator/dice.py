"""Choices that come out the same on every run and with every version of Python."""

import random


class Dice:
    """A random source of its own for each purpose, so that a new row disturbs nothing else.

    Only random() is used: its sequence for a given seed is the one that Python guarantees.
    """

    def __init__(self, purpose):
        self._random = random.Random(f"tavrin sample 2025: {purpose}").random

    def below(self, limit):
        """A number from 0 to limit - 1."""
        return int(self._random() * limit)

    def between(self, low, high):
        """A number from low to high, both included."""
        return low + self.below(high - low + 1)

    def one_in(self, count):
        """True once in count times."""
        return self.below(count) == 0

    def pick(self, options):
        """One of the options, all equally likely."""
        return options[self.below(len(options))]

    def pick_weighted(self, options, weights):
        """One of the options, as likely as its weight says."""
        point = self.below(sum(weights))
        for option, weight in zip(options, weights):
            point -= weight
            if point < 0:
                return option
        raise AssertionError("the point lies below the sum of the weights")
