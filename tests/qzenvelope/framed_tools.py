"""Drawings of many framed tools, for the tests and the benchmark of the batch run.

As a program: framed_tools.py FILE TOOLS ENTITIES [SEED] draws one.
"""

import random
import sys

import ezdxf

TOOL_NUMBER = "TUKANGE_NAME_IDENTITY"
WIDTH, HEIGHT = 200.0, 100.0  # of a frame
PITCH = 220.0


class Sheet:
    """Frames in rows of forty, each with a stepped tool whose lower half mirrors the upper one."""

    def __init__(self, seed=1):
        self.doc = ezdxf.new("R2010", units=4)
        self.space = self.doc.modelspace()
        self.random = random.Random(seed)
        self.count = 0
        self.doc.linetypes.add("CENTER", [12.0, 8.0, -1.5, 1.0, -1.5], description="Center")
        self.doc.layers.add("CENTRE", color=1, linetype="CENTER")
        self.doc.appids.add(TOOL_NUMBER)
        block = self.doc.blocks.new("FRAME")
        corners = [(0, 0), (WIDTH, 0), (WIDTH, HEIGHT), (0, HEIGHT)]
        for start, end in zip(corners, corners[1:] + corners[:1]):
            block.add_line(start, end)

    def steps(self, count):
        """Profile from axis to axis as (x, radius): steps that are up to 30 high and 150 long."""
        width = 150.0 / count
        profile = [(0.0, 0.0)]
        for i in range(count):
            radius = round(self.random.uniform(5, 30), 3)
            profile += [(i * width, radius), ((i + 1) * width, radius)]
        return profile + [(150.0, 0.0)]

    def add(self, number, entities=40, profile=None, centre_line=True):
        """One tool in the next frame. Returns its frame and the volume of its solid."""
        corner = (self.count % 40 * PITCH, self.count // 40 * PITCH)
        self.count += 1
        frame = self.space.add_blockref("FRAME", corner)
        frame.set_xdata(TOOL_NUMBER, [(1000, number)])
        left, axis = corner[0] + 20, corner[1] + HEIGHT / 2
        # Outlines of both halves and an edge across each step make five lines a step.
        profile = profile or self.steps(max(1, (entities - 3) // 5))
        for side in (1, -1):
            points = [(left + x, axis + side * r) for x, r in profile]
            for start, end in zip(points, points[1:]):
                self.space.add_line(start, end)
        for (x, r), (u, s) in zip(profile[1:], profile[2:-1]):
            if x != u:
                self.space.add_line((left + x + 0.3, axis - r), (left + x + 0.3, axis + r))
        if centre_line:
            self.space.add_line((left - 5, axis), (left + 155, axis), dxfattribs={"layer": "CENTRE"})
        volume = sum(3.141592653589793 * (u - x) * (r * r + r * s + s * s) / 3
                     for (x, r), (u, s) in zip(profile, profile[1:]))
        return frame, volume

    def save(self, path):
        self.doc.saveas(path)


def main():
    path, tools, entities = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    sheet = Sheet(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
    for i in range(tools):
        sheet.add(f"T{i:04}", entities)
    sheet.save(path)


if __name__ == "__main__":
    main()
