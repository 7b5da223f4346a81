"""Checks who includes whom, and that ARCHITECTURE.md names the folders that exist.

pictal, Examples -> subsystems -> Platform -> the standard library.
"""

import pathlib
import re
import subprocess
import sys

# Which subsystems may include which other ones.
SUBSYSTEM_USES = {
    "Annotation": {"Styling"},
    "Support": {"Shortcuts"},
}
# The floors of Platform/: each includes only what stands before it.
PLATFORM = ["Foundation", "Graphics", "ImageIO", "Text", "Registration"]
# Folders that are not installed: detail/ is its own folder's alone, the others are the library's.
INTERNAL = {"detail", "Kernels", "Pixels", "Coding", "Registration"}

STANDARD = set("""
    algorithm any array bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits cmath compare complex concepts cstdarg cstddef cstdint cstdlib cstring ctime cwchar
    cwctype deque exception execution expected filesystem forward_list functional initializer_list
    iterator limits list map memory memory_resource new numbers numeric optional queue random ranges
    ratio regex scoped_allocator set source_location span stack stdexcept stop_token string
    string_view system_error tuple type_traits typeindex typeinfo unordered_map unordered_set utility
    valarray variant vector version
    """.split())
# For those who read and write; the library does neither, but by Platform's files.
STREAMS = set("""
    cstdio fstream iomanip ios iosfwd iostream istream ostream spanstream sstream streambuf
    """.split())
LOCKS = {"atomic", "condition_variable", "mutex", "shared_mutex"}
THREADS = {"barrier", "future", "latch", "pthread.h", "semaphore", "thread", "threads.h"}

problems = []


def files(*patterns):
    listed = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", *patterns],
        capture_output=True, text=True, check=True).stdout.split()
    return [pathlib.Path(name) for name in listed if pathlib.Path(name).exists()]


def area(path):
    """"pictal", "Platform", or the name of a subsystem; "PictalCore" for the umbrella headers."""
    if path.parts[0] == "PictalCore" and len(path.parts) > 2:
        return path.parts[1]
    return path.parts[0]


def uses(here):
    """The areas that one area may include."""
    if here in ("pictal", "Examples"):
        return {here} | {area(path) for path in files("PictalCore/*.h")}
    if here == "PictalCore":
        return {area(path) for path in files("PictalCore/*.h")}
    return {here, "Platform", "PictalCore"} | SUBSYSTEM_USES.get(here, set())


def fault_of_own(source, target):
    """Why the source may not include this header of the project; nothing when it may."""
    here = area(source)
    if not target.is_file():
        return "is no file of the project; includes are written from its root"
    if area(target) not in uses(here):
        return f"is not for {here}"
    if here == "Platform" and area(target) == here:
        floor = source.parts[2]
        if floor not in PLATFORM or target.parts[2] not in PLATFORM[:PLATFORM.index(floor) + 1]:
            return f"is not below Platform/{floor}"
    if "detail" in target.parts:
        owner = target.parts[:target.parts.index("detail")]
        if source.parts[:len(owner)] != owner:
            return f"is {'/'.join(owner)}'s own"
    if INTERNAL & set(target.parts):
        if here in ("pictal", "Examples"):
            return "is the library's own"
        if source.suffix == ".h" and not INTERNAL & set(source.parts):
            return "is internal, and a public header includes it"
    if "Kernels" in source.parts and "Kernels" not in target.parts:
        return "is above the kernels"
    return None


def fault_of_foreign(source, name):
    """The same for a header in angle brackets."""
    here = area(source)
    platform = here == "Platform"
    if pathlib.Path(name).is_file():
        return "is the project's, which quotes its own headers"
    if name in STANDARD or here == "pictal" or (here == "Examples" and name in STREAMS):
        return None
    if name in THREADS:
        return "starts or joins threads, which the library does not"
    if name in LOCKS:
        return None if platform else "is for locks, which only Platform/ has"
    if platform and source.suffix == ".cpp":
        return None
    return "belongs behind the platform layer"


sources = files(*(f"{folder}/*.{suffix}" for folder in ("PictalCore", "pictal", "Examples")
                  for suffix in ("h", "cpp")))
for source in sources:
    for number, line in enumerate(source.read_text().splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if not match:
            continue
        kind, name = match.groups()
        target = pathlib.Path(name)
        fault = fault_of_own(source, target) if kind == '"' else fault_of_foreign(source, name)
        if fault:
            problems.append(f"{source}:{number}: {name} {fault}")

umbrella = pathlib.Path("PictalCore/PictalCore.h").read_text()
for header in files("PictalCore/*.h"):
    internal = INTERNAL & set(header.parts)
    if not internal and header.name != "PictalCore.h" and f'"{header}"' not in umbrella:
        problems.append(f"PictalCore/PictalCore.h leaves out {header}")

architecture = pathlib.Path("ARCHITECTURE.md").read_text()
for name in re.findall(r"`([A-Za-z.][\w./-]*/[\w./-]*)`", architecture):
    if not pathlib.Path(name).exists():
        problems.append(f"ARCHITECTURE.md names {name}, which does not exist")
folders = {path.parent for path in files("PictalCore/*", "pictal/*")}
for folder in sorted(folders):
    if folder.name not in ("detail", "PictalCore") and f"`{folder}/`" not in architecture:
        problems.append(f"ARCHITECTURE.md leaves out {folder}/")

print("\n".join(problems) or "Includes point the right way.")
sys.exit(1 if problems else 0)
