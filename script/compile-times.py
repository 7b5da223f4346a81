"""Prints which files of a build took longest to compile, in seconds of processor time; fails over ten.

The build keeps the times beside the objects (cmake/compile-time). What came from the compiler's
cache has none unless this folder has compiled it once.
"""

import pathlib
import re
import sys

LIMIT = 10

build = pathlib.Path(sys.argv[1])
seconds = {}
for path in build.rglob("*.times"):
    if not path.with_suffix("").exists():
        continue    # of a file that is no longer there
    # The second line is of the children: user and system, each as 1m2.345s.
    numbers = re.findall(r"(\d+)m([\d.]+)s", path.read_text().splitlines()[1])
    seconds[path.relative_to(build).with_suffix("")] = sum(
        int(minutes) * 60 + float(rest) for minutes, rest in numbers)

if not seconds:
    print(f"{build} has no times: nothing in it was compiled without the cache")
for name, time in sorted(seconds.items(), key=lambda item: -item[1])[:5]:
    print(f"{time:6.1f} s  {name}{'  over ' + str(LIMIT) + ' s' if time > LIMIT else ''}")
sys.exit(any(time > LIMIT for time in seconds.values()))
