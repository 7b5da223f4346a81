"""Checks the direction of includes and that ARCHITECTURE.md names the folders that exist.

pictal, Examples -> subsystems -> Platform -> the standard library. Third-party headers are included
only by sources below Platform/ and by pictal/; headers in detail/ folders are for their own side.
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
# Folders that are not installed: detail/ is its own folder's alone, the others are the library's.
INTERNAL = {"detail", "Kernels", "Pixels", "Coding"}
THIRD_PARTY = re.compile(
    r"^(hb|fontconfig|ft2build|freetype|unicode|nlohmann|png|libdeflate|isa-l|lcms2|sqlite3|fmt|CLI"
    r"|gtest|benchmark)\b")
# What the standard library and POSIX call their headers.
STANDARD = re.compile(r"^([a-z_]+|[a-z]+\.h|sys/[a-z]+\.h|immintrin\.h|linux/[a-z]+\.h)$")

problems = []


def files(*patterns):
    listed = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", *patterns],
        capture_output=True, text=True, check=True).stdout.split()
    return [pathlib.Path(name) for name in listed if pathlib.Path(name).exists()]


def area(path):
    """"pictal", "Platform", or the name of a subsystem; nothing for the umbrella headers."""
    if path.parts[0] != "PictalCore":
        return path.parts[0]
    return path.parts[1] if len(path.parts) > 2 else None


for source in files("PictalCore/*.h", "PictalCore/*.cpp", "pictal/*.h", "pictal/*.cpp",
                    "Examples/*.h", "Examples/*.cpp"):
    here = area(source)
    public = source.suffix == ".h" and "detail" not in source.parts and here not in (
        "pictal", "Examples")
    for number, line in enumerate(source.read_text().splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if not match:
            continue
        kind, name = match.groups()
        where = f"{source}:{number}"
        if kind == '"':
            target = area(pathlib.Path(name))
            if here == "Platform" and target not in ("Platform", None):
                problems.append(f"{where}: Platform includes {name}")
            if here not in (None, "Platform", "pictal", "Examples") and target not in (
                    None, "Platform", here) and target not in SUBSYSTEM_USES.get(here, set()):
                problems.append(f"{where}: {here} may not include {name}")
            if public and "/detail/" in name:
                problems.append(f"{where}: a public header includes the internal {name}")
            if here in ("Examples",) and "/detail/" in name:
                problems.append(f"{where}: an example includes the internal {name}")
        elif THIRD_PARTY.match(name) or not STANDARD.match(name):
            allowed = here == "pictal" or (here == "Platform" and source.suffix == ".cpp")
            if not allowed:
                problems.append(f"{where}: {name} belongs behind the platform layer")

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
