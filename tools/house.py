#!/usr/bin/env python3
"""Draws docs/house.svg, the folders of src and who uses whom, from the sources themselves.

    tools/house.py           draws the picture
    tools/house.py --check   draws nothing; fails when the house is out of order or the picture is not up to date

The lists of folders in src/CMakeLists.txt are the order of the house, from the bottom up: a folder may include what stands
before it. What stands before find_package(Qt6 ...) there is below the line and includes nothing of Qt. The first comment
of a folder's CMakeLists.txt says what the folder is.
"""
import pathlib
import re
import sys
import textwrap
from xml.sax.saxutils import escape

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs/house.svg"
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
PADDING, LINE_HEIGHT, LETTER, GAP, RANK_GAP = 8, 14, 6.3, 24, 46  # in pixels


def read_house():
    """The folders from the bottom up, and how many of them are below the line."""
    below, _, above = (ROOT / "src/CMakeLists.txt").read_text().partition("find_package(Qt6")
    core, forms = ([folder for names in re.findall(r"foreach\(folder ([\w\s]+)\)", half) for folder in names.split()]
                   for half in (below, above))
    return core + forms, len(core)


def read_includes(folders, line):
    """The folders that each folder includes, and what is out of order."""
    uses = {}
    faults = [f"src/{path.name} is in no list of src/CMakeLists.txt"
              for path in sorted((ROOT / "src").iterdir()) if path.is_dir() and path.name not in folders]
    for level, folder in enumerate(folders):
        uses[folder] = set()
        for path in sorted((ROOT / "src" / folder).glob("*.[ch]*")):
            where = path.relative_to(ROOT)
            for bracket, name in INCLUDE.findall(path.read_text()):
                target = name.split("/")[0]
                if bracket == "<" and level < line and re.match(r"Q[A-Zt]", name):
                    faults.append(f"{where} includes {name}, but src/{folder} is below the line and knows no Qt")
                if bracket == '"' and "/" in name and target in folders and target != folder:
                    uses[folder].add(target)
                    if folders.index(target) > level:
                        faults.append(f"{where} includes {name}, which is above src/{folder}")
    return uses, faults


def reduced(uses):
    """The same without the arrows that a chain of others makes up for."""
    def reach(folder):
        return set().union(*({used} | reach(used) for used in uses[folder]), set())

    return {folder: {used for used in used_ones if not any(used in reach(other) for other in used_ones - {used})}
            for folder, used_ones in uses.items()}


class Box:
    """A folder, or a bend in an arrow that passes a row of folders."""
    def __init__(self, name, rank):
        self.name, self.rank, self.lines, self.below, self.above = name, rank, [], [], []
        self.width = self.height = self.x = self.y = 0
        if name:
            text = (ROOT / "src" / name / "CMakeLists.txt").read_text()
            about = " ".join(re.match(r"(?:#.*\n)+", text)[0].replace("#", "").split())
            self.lines = textwrap.wrap(about.removesuffix("."), 27)
            self.width = 2 * PADDING + LETTER * max(map(len, [name, *self.lines]))
            self.height = 2 * PADDING + LINE_HEIGHT * (1 + len(self.lines))


def make_rows(folders, line, arrows):
    """Rows of boxes from the bottom up; each arrow goes from one row to the next."""
    boxes = {}
    for level, folder in enumerate(folders):
        rank = max((boxes[used].rank + 1 for used in arrows[folder]), default=0)
        if level >= line:
            rank = max(rank, 1 + max(boxes[name].rank for name in folders[:line]))
        boxes[folder] = Box(folder, rank)
    rows = [[] for _ in range(1 + max(box.rank for box in boxes.values()))]
    for folder in folders:
        rows[boxes[folder].rank].append(boxes[folder])
    for folder in folders:
        for used in sorted(arrows[folder], key=folders.index):
            above = boxes[folder]
            for rank in range(boxes[folder].rank - 1, boxes[used].rank, -1):
                bend = Box("", rank)
                rows[rank].append(bend)
                above.below.append(bend)
                bend.above.append(above)
                above = bend
            above.below.append(boxes[used])
            boxes[used].above.append(above)
    return rows


def place(rows):
    """Gives every box its middle. Boxes go towards those they are joined to, as far as their neighbours let them."""
    for row in rows:
        x = 0
        for box in row:
            box.x = x + box.width / 2
            x += box.width + GAP
    for turn in range(60):
        for row in rows if turn % 2 else rows[::-1]:
            for box in row:
                joined = (box.below if turn % 2 else box.above) or box.below + box.above
                if joined:
                    box.x = sum(other.x for other in joined) / len(joined)
            row.sort(key=lambda box: box.x)
            for left, right in zip(row, row[1:]):
                overlap = left.x + (left.width + right.width) / 2 + GAP - right.x
                if overlap > 0:
                    right.x += overlap
            pushed = sum(box.x for box in row) / len(row)
            wished = sum(other.x for box in row for other in box.below + box.above)
            count = sum(len(box.below + box.above) for box in row)
            for box in row:
                box.x += (wished / count if count else pushed) - pushed
    y = 0
    for row in rows[::-1]:
        height = max(box.height for box in row)
        for box in row:
            box.y = y + height / 2
        y += height + RANK_GAP
    left = min(box.x - box.width / 2 for row in rows for box in row)
    for row in rows:
        for box in row:
            box.x, box.y = box.x - left + 20, box.y + 20


def draw_arrow(box, start, out):
    """From the lower edge of a folder through the bends to the upper edge of another."""
    for below in start:
        points = [(box.x, box.y + box.height / 2)]
        while not below.name:
            points.append((below.x, below.y))
            below = below.below[0]
        points.append((below.x, below.y - below.height / 2 - 2))
        path = f"M{points[0][0]:.0f},{points[0][1]:.0f}"
        for (x0, y0), (x1, y1) in zip(points, points[1:]):
            path += f" C{x0:.0f},{(y0 + y1) / 2:.0f} {x1:.0f},{(y0 + y1) / 2:.0f} {x1:.0f},{y1:.0f}"
        out.append(f'<path d="{path}" fill="none" stroke="#5a6b73" marker-end="url(#tip)"/>')


def draw(folders, line, rows):
    boxes = [box for row in rows for box in row]
    width = max(box.x + box.width / 2 for box in boxes) + 20
    height = max(box.y + box.height / 2 for box in boxes) + 20
    rank = max(box.rank for box in boxes if box.name in folders[:line])
    line_y = min(box.y - box.height / 2 for box in rows[rank]) - RANK_GAP / 2
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:.0f}" height="{height:.0f}" '
           f'viewBox="0 0 {width:.0f} {height:.0f}" font-family="DejaVu Sans, sans-serif" font-size="11">',
           '<!-- Drawn by tools/house.py from the includes; change the sources, not this file. -->',
           '<defs><marker id="tip" markerWidth="8" markerHeight="8" refX="6" refY="3" orient="auto">'
           '<path d="M0,0 L7,3 L0,6 z" fill="#5a6b73"/></marker></defs>',
           f'<rect width="{width:.0f}" height="{line_y:.0f}" fill="#f1f7f9"/>',
           f'<rect y="{line_y:.0f}" width="{width:.0f}" height="{height - line_y:.0f}" fill="#fbf7ee"/>',
           f'<line x1="0" y1="{line_y:.0f}" x2="{width:.0f}" y2="{line_y:.0f}" stroke="#8a8f80" stroke-dasharray="6 4"/>',
           f'<text x="8" y="{line_y - 6:.0f}" fill="#1f5263">Qt</text>',
           f'<text x="8" y="{line_y + 15:.0f}" fill="#6b5a2e">no Qt</text>']
    for box in boxes:
        if box.name:
            draw_arrow(box, box.below, out)
    for box in boxes:
        if box.name:
            x, y = box.x - box.width / 2, box.y - box.height / 2
            out.append(f'<rect x="{x:.0f}" y="{y:.0f}" width="{box.width:.0f}" height="{box.height:.0f}" rx="5" '
                       f'fill="#ffffff" stroke="#1f5263"/>')
            for number, text in enumerate([box.name, *box.lines]):
                bold = "" if number else ' font-weight="bold"'
                baseline = y + PADDING + LINE_HEIGHT * (number + 0.8)
                out.append(f'<text x="{box.x:.0f}" y="{baseline:.0f}" text-anchor="middle"{bold}>{escape(text)}</text>')
    return "\n".join(out + ["</svg>", ""])


def main():
    folders, line = read_house()
    uses, faults = read_includes(folders, line)
    if not faults:
        rows = make_rows(folders, line, reduced(uses))
        place(rows)
        picture = draw(folders, line, rows)
        if "--check" not in sys.argv[1:]:
            PICTURE.write_text(picture)
        elif not PICTURE.exists() or PICTURE.read_text() != picture:
            faults.append("docs/house.svg is not up to date: run tools/house.py")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
