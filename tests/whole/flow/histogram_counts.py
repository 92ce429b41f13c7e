"""Counts the values of a binary PPM picture as a histogram scope does.

usage: histogram_counts.py PICTURE.ppm

Prints 768 numbers, one a line: how many pixels fall into bin 0..255 of red, then of green, then of
blue. A value v of 0..1 falls into bin floor(v * 255); values of exactly 0 are not counted.
"""

import collections
import sys


def read_ppm(path):
    with open(path, "rb") as file:
        data = file.read()
    fields = data.split(maxsplit=4)
    if fields[0] != b"P6":
        raise SystemExit(path + ": no binary PPM")
    width, height, top = (int(field) for field in fields[1:4])
    size = 1 if top < 256 else 2
    pixels = data[len(data) - width * height * 3 * size:]
    samples = [int.from_bytes(pixels[i:i + size], "big") for i in range(0, len(pixels), size)]
    return samples, top


def main():
    samples, top = read_ppm(sys.argv[1])
    for channel in range(3):
        counts = collections.Counter(v * 255 // top for v in samples[channel::3] if v > 0)
        for value in range(256):
            print(counts[value])


main()
