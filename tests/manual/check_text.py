#!/usr/bin/env python3
"""check_text.py REPOSITORY: links, pictures, messages and chapters of the manual exist.

A message in the table of messages.md stands in backquotes in the first column of its row; "..." is
what differs from case to case. Each part between must stand in the sources, all of them in one file.
"""
import pathlib
import re
import sys

MOST_PICTURE = 100_000  # bytes

root = pathlib.Path(sys.argv[1])
manual = root / "docs" / "manual"
texts = {path.name: path.read_text(encoding="utf-8") for path in sorted(manual.glob("*.md"))}
faults = []


def without_code(text):
    return re.sub(r"```.*?```|`[^`\n]*`", "", text, flags=re.S)


def anchors_of(text):
    found = set()
    for heading in re.findall(r"^#+ (.*)$", without_code_blocks(text), re.M):
        slug = re.sub(r"[^\w\- ]", "", heading.replace("`", "").strip().lower())
        found.add(slug.replace(" ", "-"))
    return found


def without_code_blocks(text):
    return re.sub(r"```.*?```", "", text, flags=re.S)


def check_links(name, text):
    for target in re.findall(r"\]\(([^)\s]+)\)", without_code(text)):
        if re.match(r"\w+:", target):
            continue
        file, _, anchor = target.partition("#")
        if file and not (manual / file).is_file():
            faults.append(f"{name}: {target} does not exist")
        elif anchor and anchor not in anchors_of(texts.get(file or name, "")):
            faults.append(f"{name}: no heading is called {target}")


def check_pictures():
    shown = set(re.findall(r"\]\(pictures/([^)]+)\)", "".join(texts.values())))
    for path in sorted((manual / "pictures").iterdir()):
        if path.name not in shown:
            faults.append(f"no chapter shows pictures/{path.name}")
        if path.stat().st_size > MOST_PICTURE:
            faults.append(f"pictures/{path.name} has {path.stat().st_size} bytes")


def source_texts():
    """The string literals of each source, adjacent ones joined."""
    for path in sorted((root / "src").rglob("*")):
        if path.suffix in (".cpp", ".h"):
            text = path.read_text(encoding="utf-8")
            literals = re.findall(r'"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*', text)
            joined = [re.sub(r'"\s*"', "", literal)[1:-1] for literal in literals]
            yield "\n".join(joined).replace('\\"', '"')


def check_messages():
    sources = list(source_texts())
    rows = re.findall(r"^\| `([^`]+)` \|", texts.get("messages.md", ""), re.M)
    if len(rows) < 20:
        faults.append("messages.md: no table of messages was found")
    for message in rows:
        parts = [part.strip() for part in message.split("...") if part.strip()]
        if not any(all(part in source for part in parts) for source in sources):
            faults.append(f"messages.md: no source says: {message}")


def check_chapters():
    header = (root / "src/base/manual.h").read_text(encoding="utf-8")
    named = re.findall(r'ManualChapter\{"([\w-]+)"', header)
    built = re.search(r"set\(chapters ([^)]*)\)", (root / "cmake/Manual.cmake").read_text())
    if built.group(1).split() != named:
        faults.append("cmake/Manual.cmake and src/base/manual.h name other chapters")
    if sorted(name + ".md" for name in named) != sorted(texts):
        faults.append("src/base/manual.h does not name the files of docs/manual")
    for name in named[1:]:
        if f"]({name}.md)" not in texts.get("index.md", ""):
            faults.append(f"index.md: {name} is missing")


for name, text in texts.items():
    check_links(name, text)
check_pictures()
check_messages()
check_chapters()
for fault in faults:
    print(fault, file=sys.stderr)
sys.exit(1 if faults else 0)
