"""Random choices that are the same on every run and with every version of Python."""

import random


class Dice:
    """A random source for one purpose, so that a new row does not change other choices.

    Uses only random(), whose sequence for a given seed Python guarantees.
    """

    def __init__(self, purpose):
        self._random = random.Random(f"tavrin sample 2025: {purpose}").random

    def below(self, limit):
        """Returns a number from 0 to limit - 1."""
        return int(self._random() * limit)

    def between(self, low, high):
        """Returns a number from low to high inclusive."""
        return low + self.below(high - low + 1)

    def one_in(self, count):
        """Returns True with probability 1 / count."""
        return self.below(count) == 0

    def pick(self, options):
        """Returns one of the options, all equally likely."""
        return options[self.below(len(options))]

    def pick_weighted(self, options, weights):
        """Returns one of the options with a probability in proportion to its weight."""
        point = self.below(sum(weights))
        for option, weight in zip(options, weights):
            point -= weight
            if point < 0:
                return option
        raise AssertionError("the point lies below the sum of the weights")
