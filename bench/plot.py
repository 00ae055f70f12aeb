#!/usr/bin/env python3
"""Draws bench/growth.csv as pictures in bench/plots, one file a plot.

A line of growth.csv is: plot, series, x, y. Both axes are logarithmic, so that a
straight line is a power of x; needs nothing but Python.
"""
import csv
import math
import pathlib

HERE = pathlib.Path(__file__).parent
WIDTH, HEIGHT = 520, 320
LEFT, RIGHT, TOP, BOTTOM = 60, 110, 34, 46
COLOURS = ["#1b6ca8", "#c8553d", "#4a7c59", "#7d5ba6"]
TITLES = {
    "mesh": ("A frame by its mesh, 1280 x 960, low quality", "cells a side", "ms"),
    "picture": ("A frame by its size, 1024 x 1024 cells, high quality", "megapixels", "ms"),
    "terrain": ("One frame with loading and saving, by its terrain", "pixels a side", "s"),
    "memory": ("Peak memory of that frame, by its terrain", "pixels a side", "MB"),
    "frames": ("Peak memory of a run, by its frames", "frames", "MB"),
}


def read():
    plots = {}
    with open(HERE / "growth.csv", newline="") as file:
        for plot, series, x, y in csv.reader(file):
            plots.setdefault(plot, {}).setdefault(series, []).append((float(x), float(y)))
    return plots


def decades(low, high):
    """Powers of ten and their halves from below low to above high."""
    marks = []
    power = math.floor(math.log10(low))
    while 10 ** power <= high * 1.0001:
        marks += [m * 10 ** power for m in (1, 2, 5)]
        power += 1
    inside = [m for m in marks if low * 0.999 <= m <= high * 1.001]
    return inside or [low, high]


def text(x, y, words, anchor="middle", size=12, colour="#333"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" '
            f'fill="{colour}">{words}</text>')


def draw(name, series):
    title, x_name, y_name = TITLES[name]
    points = [p for line in series.values() for p in line]
    x_low, x_high = min(p[0] for p in points), max(p[0] for p in points)
    y_low, y_high = min(p[1] for p in points) / 1.5, max(p[1] for p in points) * 1.5

    def column(x):
        part = math.log(x / x_low) / math.log(x_high / x_low)
        return LEFT + part * (WIDTH - LEFT - RIGHT)

    def row(y):
        part = math.log(y / y_low) / math.log(y_high / y_low)
        return HEIGHT - BOTTOM - part * (HEIGHT - TOP - BOTTOM)

    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           f'font-family="sans-serif"><rect width="100%" height="100%" fill="white"/>',
           text(WIDTH / 2, 20, title, size=14)]
    for mark in decades(y_low, y_high):
        out.append(f'<path d="M{LEFT} {row(mark):.1f}H{WIDTH - RIGHT}" stroke="#ddd"/>')
        out.append(text(LEFT - 6, row(mark) + 4, f"{mark:g}", "end"))
    for x in sorted({p[0] for p in points}):
        out.append(f'<path d="M{column(x):.1f} {TOP}V{HEIGHT - BOTTOM}" stroke="#eee"/>')
        out.append(text(column(x), HEIGHT - BOTTOM + 16, f"{x:g}", size=11))
    out.append(text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 8, x_name))
    out.append(text(LEFT - 6, TOP - 4, y_name, "end"))
    for k, (label, line) in enumerate(series.items()):
        colour = COLOURS[k % len(COLOURS)]
        path = " ".join(f"{column(x):.1f},{row(y):.1f}" for x, y in line)
        out.append(f'<polyline points="{path}" fill="none" stroke="{colour}" '
                   f'stroke-width="2"/>')
        out += [f'<circle cx="{column(x):.1f}" cy="{row(y):.1f}" r="3" fill="{colour}"/>'
                for x, y in line]
        x, y = line[-1]
        out.append(text(column(x) + 8, row(y) + 4, label, "start", colour=colour))
    out.append("</svg>\n")
    (HERE / "plots").mkdir(exist_ok=True)
    (HERE / "plots" / f"{name}.svg").write_text("\n".join(out))


for plot_name, plot_series in read().items():
    draw(plot_name, plot_series)
