#!/usr/bin/env python3
"""Draws the layers of src/ and what each stands on, from the LAYERS lists, as docs/pictures/layers.svg. A line is left
out where it would say no more than the lines below it: who stands on checks may use scan as well.

    tools/layer_picture.py
"""
import itertools
from html import escape

import project

PICTURE = "docs/pictures/layers.svg"
BOX, DUMMY, GAP, HEIGHT, STEP, MARGIN = 104, 8, 28, 36, 84, 24
STYLE = """
    .ground { fill: #faf8f5; }
    rect { fill: #ffffff; stroke: #8a6d45; stroke-width: 1.5; }
    path { fill: none; stroke: #8d8579; stroke-width: 1.25; }
    text { fill: #2b2622; font: 15px sans-serif; text-anchor: middle; }
    @media (prefers-color-scheme: dark) {
      .ground { fill: #1d1b19; }
      rect { fill: #2a2724; stroke: #c9a36a; }
      path { stroke: #8f877c; }
      text { fill: #f1ece5; }
    }
  """


def needed_lines(layers):
    """{layer: the layers that no other of its layers stands on}"""
    def below(layer):
        return set(layers[layer]).union(*map(below, layers[layer]))
    return {layer: sorted(set(uses) - set().union(*map(below, uses))) for layer, uses in layers.items()}


def ranks(layers):
    """{layer: how many stand below it, at most}"""
    def rank(layer):
        return 1 + max(map(rank, layers[layer]), default=-1)
    return {layer: rank(layer) for layer in layers}


def spread(rank_of, lines):
    """The rows from the top, and the lines from row to row: a line that passes a row has a place there, (its target,
    the row's rank), shared by all lines to that target."""
    rows = {rank: [] for rank in range(max(rank_of.values()), -1, -1)}
    for layer in sorted(rank_of):
        rows[rank_of[layer]].append(layer)
    steps = set()
    for layer, uses in sorted(lines.items()):
        for use in uses:
            places = [layer, *((use, rank) for rank in range(rank_of[layer] - 1, rank_of[use], -1)), use]
            for place in places[1:-1]:
                if place not in rows[place[1]]:
                    rows[place[1]].append(place)
            steps.update(itertools.pairwise(places))
    return list(rows.values()), sorted(steps, key=str)


def crossings(rows, steps):
    at = {place: number for row in rows for number, place in enumerate(row)}
    row_of = {place: number for number, row in enumerate(rows) for place in row}
    return sum((at[a] - at[c]) * (at[b] - at[d]) < 0 for (a, b), (c, d) in itertools.combinations(steps, 2)
               if row_of[a] == row_of[c])


def arranged(rows, steps):
    """The rows with few lines that cross: each place moves below, then above, the middle of what it is tied to."""
    best = rows
    for sweep in range(24):
        order = range(1, len(rows)) if sweep % 2 == 0 else range(len(rows) - 2, -1, -1)
        rows = [list(row) for row in rows]
        for number in order:
            beside = rows[number - 1 if sweep % 2 == 0 else number + 1]
            middle = {}
            for place in rows[number]:
                tied = [beside.index(other) for step in steps if place in step for other in step if other in beside]
                middle[place] = sum(tied) / len(tied) / len(beside) if tied else 0.5
            rows[number].sort(key=lambda place: (middle[place], str(place)))
        if crossings(rows, steps) < crossings(best, steps):
            best = rows
    return best


def picture(layers):
    """The SVG text."""
    rows, steps = spread(ranks(layers), needed_lines(layers))
    rows = arranged(rows, steps)

    def width(place):
        return BOX if isinstance(place, str) else DUMMY
    wide = max(sum(map(width, row)) + GAP * (len(row) - 1) for row in rows)
    where = {}
    for number, row in enumerate(rows):
        x = MARGIN + (wide - sum(map(width, row)) - GAP * (len(row) - 1)) / 2
        for place in row:
            where[place] = round(x + width(place) / 2), MARGIN + number * STEP
            x += width(place) + GAP
    size = f"{wide + 2 * MARGIN} {MARGIN * 2 + (len(rows) - 1) * STEP + HEIGHT}"
    drawn = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {size}" role="img">',
             f"  <title>The layers, each above those it stands on</title>\n  <style>{STYLE}</style>",
             '  <rect class="ground" width="100%" height="100%" stroke="none" style="stroke: none"/>']
    for above, below in steps:
        (x, y), (to_x, to_y) = where[above], where[below]
        start, half = y + HEIGHT, (to_y - y - HEIGHT) // 2
        passed = "" if isinstance(below, str) else f" V {to_y + HEIGHT}"
        drawn.append(f'  <path d="M {x} {start} C {x} {start + half} {to_x} {to_y - half} {to_x} {to_y}{passed}"/>')
    for place, (x, y) in sorted(where.items(), key=str):
        if isinstance(place, str):
            drawn.append(f'  <rect x="{x - BOX // 2}" y="{y}" width="{BOX}" height="{HEIGHT}" rx="6"/>\n'
                         f'  <text x="{x}" y="{y + 23}">{escape(place)}</text>')
    return "\n".join([*drawn, "</svg>\n"])


def main():
    top = project.root()
    (top / PICTURE).write_text(picture(project.layers(top)))


if __name__ == "__main__":
    main()
