"""Times `rg -ic` counting the rows that contain each text, for comparison with the text filter.
Prints median, minimum and maximum of five runs. Arguments: rows.txt texts.txt"""

import pathlib
import statistics
import subprocess
import sys
import time

RUNS = 5


def milliseconds(rows: str, text: str) -> float:
    start = time.perf_counter()
    subprocess.run(
        ["rg", "-icF", "--", text, rows], stdout=subprocess.DEVNULL, check=False
    )
    return (time.perf_counter() - start) * 1000


def main() -> None:
    rows, texts = sys.argv[1:]
    print(f"\n{'rg -ic over the same rows as a text file':58} {'median':>10} {'min':>10} {'max':>10}")
    for line in pathlib.Path(texts).read_text(encoding="utf-8").splitlines():
        what, text = line.split("\t")
        times = sorted(milliseconds(rows, text) for _ in range(RUNS))
        median = statistics.median(times)
        print(f"{what:58} {median:10.2f} {times[0]:10.2f} {times[-1]:10.2f}  ms")


if __name__ == "__main__":
    main()
