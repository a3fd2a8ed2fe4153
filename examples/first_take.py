#!/usr/bin/env python3
"""A first take from a script: create a tool, drive it, change it, simulate it again, export it.

Usage: first_take.py [OUTPUT_FOLDER]   (default: the present folder)
"""

import math
import sys
import tempfile

import rigstage


def positions(node, frames, step):
    return [node.position(frame * step) for frame in range(frames + 1)]


def largest_difference(first, second):
    return max(math.dist(a, b) for a, b in zip(first, second))


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else "."
    with tempfile.TemporaryDirectory() as profiles, \
            rigstage.Stage(fps=25, end=10.0, user_folder=profiles) as stage:
        tool = stage.create("Sinusoid")
        pad = stage.add_device("Pad")
        tool.input("Spinner: Amplitude").bind(pad, "Axis", 0)
        tool.input("Spinner: Amplitude").multiplier = 0.1

        # The hand on the stick: what a device would have read before each frame.
        stage.record(10.0, before_frame=lambda t: pad.set("Axis", 0, math.sin(1.5 * t)))
        node = tool.node("SinusNode")
        take = positions(node, 250, stage.frame_duration)
        print(f"recorded {len(node.key_times())} keys of {node.name}, "
              f"highest {max(y for _, y, _ in take):.3f} m")

        stage.resimulate()
        again = positions(node, 250, stage.frame_duration)
        print(f"resimulated with nothing changed: largest difference {largest_difference(take, again)}")

        tool.set("Response Factor", 0.5)
        stage.resimulate()
        livelier = positions(node, 250, stage.frame_duration)
        print(f"resimulated with a response of 0.5: largest difference "
              f"{largest_difference(take, livelier):.3f} m")

        stage.undo()
        undone = positions(node, 250, stage.frame_duration)
        print(f"undone: largest difference {largest_difference(take, undone)}")

        stage.save(f"{folder}/first_take.glb")
        stage.export(f"{folder}/first_take_export.glb")
        print(f"saved {folder}/first_take.glb (to open again) and "
              f"{folder}/first_take_export.glb (for other programs)")


if __name__ == "__main__":
    main()
