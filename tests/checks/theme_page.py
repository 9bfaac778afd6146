"""Makes docs/theme.md, and the sheets of its colours, from the themes in toolkit/theme and from toolkit/theme/keys.json, which says
what each key is for. With --check, complains instead when they are others; with --self-test, sees to it that a page that lags
behind, a key that one theme lacks and a key of which nothing is said are found.
"""

import json
import sys
from html import escape

import tree

PAGE = "docs/theme.md"
PURPOSES = "toolkit/theme/keys.json"
SHEET = "docs/pictures/theme-{}.svg"
THEMES = ("dark", "light")
ROW, WIDTH, SWATCH = 22, 460, 60
HEAD = """# Keys of a theme

Made from `toolkit/theme/dark.json`, `light.json` and `keys.json` by `tests/checks/theme_page.py`; a change belongs there.

A theme is a JSON file with three objects: `colors`, as `#rrggbb` or `#aarrggbb`; `fonts`, each with `families`, `pixelSize` and `weight`;
`images`, each with `width`, `height` and `shapes`. `GZ::CUiResource::instance().setTheme(path)` takes one that holds only what differs from
`dark`. A key that is asked for and not there is told in the log; a colour is magenta then.

| dark | light |
|---|---|
| ![The terminal in dark colours](pictures/terminal-dark.png) | ![The terminal in light colours](pictures/terminal-light.png) |

The colours side by side: [dark](pictures/theme-dark.svg), [light](pictures/theme-light.svg).
"""


def font(told):
    return f"{told['families'][0]}, {told['pixelSize']} px, weight {told['weight']}"


def image(told):
    return f"{told['width']} by {told['height']}"


def table(kind, head, shown, themes, purposes):
    lines = [f"\n## {head}\n", "| key | dark | light | of |", "|---|---|---|---|"]
    for key in sorted(themes["dark"][kind]):
        values = [shown(themes[name][kind].get(key, themes["dark"][kind][key])) for name in THEMES]
        lines.append(f"| `{key}` | {values[0]} | {values[1]} | {purposes[kind].get(key, '')} |")
    return "\n".join(lines) + "\n"


def colour(told):
    return f"`{told}`"


def svg(colors):
    """A sheet of all colours, each with its key. Eight digits begin with the opacity."""
    rows = []
    for at, (key, value) in enumerate(sorted(colors.items())):
        opacity, plain = (int(value[1:3], 16) / 255, "#" + value[3:]) if len(value) == 9 else (1, value)
        rows.append(f'<rect x="4" y="{at * ROW + 3}" width="{SWATCH}" height="{ROW - 6}" fill="{escape(plain)}" '
                    f'fill-opacity="{opacity:.2f}" stroke="#888888"/>'
                    f'<text x="{SWATCH + 12}" y="{at * ROW + 15}">{escape(key)}  {escape(value)}</text>')
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{len(rows) * ROW}" font-family="monospace" '
            f'font-size="12"><rect width="100%" height="100%" fill="#ffffff"/>\n' + "\n".join(rows) + "\n</svg>\n")


def files_of(root):
    """What is to stand in each file, and what is wrong with the themes."""
    themes = {name: json.loads((root / f"toolkit/theme/{name}.json").read_text(encoding="utf-8")) for name in THEMES}
    complaints = [f"toolkit/theme/light.json:1: {key} is in no dark theme"
                  for kind in ("colors", "fonts", "images") for key in themes["light"].get(kind, {})
                  if key not in themes["dark"][kind]]
    purposes = json.loads((root / PURPOSES).read_text(encoding="utf-8"))
    for kind in ("colors", "fonts", "images"):
        themes["light"].setdefault(kind, {})
        complaints += [f"{PURPOSES}:1: says not what {key} is for, or of a key that is in no theme"
                       for key in sorted(themes["dark"][kind].keys() ^ purposes[kind].keys())]
    page = HEAD + "".join(table(kind, head, shown, themes, purposes) for kind, head, shown in (
        ("colors", "Colours", colour), ("fonts", "Fonts", font), ("images", "Images, in pixels", image)))
    files = {PAGE: page}
    for name in THEMES:
        files[SHEET.format(name)] = svg({**themes["dark"]["colors"], **themes[name]["colors"]})
    return files, complaints


def look(root):
    files, complaints = files_of(root)
    for name, text in files.items():
        path = root / name
        if not path.is_file() or path.read_text(encoding="utf-8") != text:
            complaints.append(f"{name}:1: is not what the themes tell, run tests/checks/theme_page.py")
    return complaints, len(files)


EMPTY = '{"colors": {"a": "#010203"}, "fonts": {}, "images": {}}'
PLANTED = [
    ("toolkit/theme/dark.json", EMPTY, []),
    ("toolkit/theme/light.json", '{"colors": {"a": "#ffffff", "only_light": "#000000"}}', [1]),
    (PURPOSES, '{"colors": {"no_key": "nothing"}, "fonts": {}, "images": {}}', [1, 1]),
    (PAGE, "another page\n", [1]),
    (SHEET.format("dark"), svg({"a": "#010203"}), []),
    (SHEET.format("light"), svg({"a": "#010203"}), [1]),
]


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("page of the theme", PLANTED, look, lambda source: source.startswith("docs/"))
    if sys.argv[1:] != ["--check"]:
        for name, text in files_of(tree.ROOT)[0].items():
            (tree.ROOT / name).write_text(text, encoding="utf-8")
    return tree.finish("page of the theme", *look(tree.ROOT))


if __name__ == "__main__":
    sys.exit(main())
