#!/usr/bin/env python3
"""Draws the pictures of docs/car.md and prints what can be judged in numbers.

Usage: car.py [OUTPUT_FOLDER] [MANOEUVRE...]   (needs python3-matplotlib and the module on PYTHONPATH)
"""

import math
import os
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import rigstage  # noqa: E402

import grounds  # noqa: E402
from drive import WHEELS, Drive  # noqa: E402

INK = {"text": "#d8dade", "grid": "#3a3d44", "back": "#1e2025", "face": "#26282e"}
COLOURS = ["#f2a33a", "#5ab0f2", "#8fd06a", "#e0607e"]


def style():
    plt.rcParams.update({
        "figure.facecolor": INK["back"], "axes.facecolor": INK["face"], "axes.edgecolor": INK["grid"],
        "axes.labelcolor": INK["text"], "text.color": INK["text"], "xtick.color": INK["text"],
        "ytick.color": INK["text"], "grid.color": INK["grid"], "axes.grid": True, "font.size": 9,
        "legend.frameon": False, "axes.prop_cycle": plt.cycler(color=COLOURS)})


def panels(title, motions, ground=None):
    """The six pictures of a manoeuvre; `motions` is {label: Motion}."""
    figure, axes = plt.subplots(2, 3, figsize=(12, 6.2), layout="constrained")
    figure.suptitle(title)
    above, speed, steering, pitch, roll, heights = axes.flat
    for label, m in motions.items():
        above.plot([p[0] for p in m.position], [-p[2] for p in m.position], label=label)
        speed.plot(m.time, m.speed)
        steering.plot(m.time, [math.degrees(v) for v in m.steering])
        pitch.plot(m.time, [math.degrees(v) for v in m.pitch])
        roll.plot(m.time, [math.degrees(v) for v in m.roll])
    first = next(iter(motions.values()))
    for w in WHEELS:
        heights.plot(first.time, first.wheels[w], label=w, linewidth=1)
    heights.legend(ncols=4, fontsize=7)
    above.set(title="from above", xlabel="x [m]", ylabel="-z [m]", aspect="equal", adjustable="datalim")
    speed.set(title="speed [m/s]")
    steering.set(title="front wheels, right + [degrees]")
    pitch.set(title="pitch, nose up + [degrees]")
    roll.set(title="roll, right side up + [degrees]")
    heights.set(title="wheel centres over zero [m]")
    for picture, least in ((steering, 2.0), (pitch, 1.0), (roll, 1.0), (heights, 0.05), (speed, 1.0)):
        low, high = picture.get_ylim()
        if high - low < least:  # noise of the last bit is not a picture
            picture.set_ylim((low + high - least) / 2, (low + high + least) / 2)
    if len(motions) > 1:
        above.legend(fontsize=7)
    return figure


# The manoeuvres: each answers (title, {label: Motion}).

def standing_start():
    with Drive(rigstage, seconds=12.0) as d:
        return "Standing start, full gas from 1 s", {"": d.take(lambda t: {"gas": float(t >= 1.0)})}


def full_speed_turn():
    def hands(t):
        return {"gas": 1.0, "steering": 1.0 if 8.0 <= t < 12.0 else 0.0}
    with Drive(rigstage, seconds=15.0) as d:
        return "Full speed, wheel hard over from 8 s to 12 s", {"": d.take(hands)}


def slalom():
    def hands(t):
        return {"gas": 0.7, "steering": 0.6 * math.sin(1.6 * (t - 4.0)) if t >= 4.0 else 0.0}
    with Drive(rigstage, seconds=16.0) as d:
        return "Slalom", {"": d.take(hands)}


def abs_stop():
    def hands(t):
        return {"gas": float(t < 10.0), "brake": float(t >= 10.0)}
    with Drive(rigstage, seconds=15.0) as d:
        return "ABS stop from full speed at 10 s", {"": d.take(hands)}


def reverse():
    def hands(t):
        gas = 1.0 if t < 4.0 else 0.0 if 8.0 <= t < 8.5 else -1.0
        return {"gas": gas, "steering": 0.5 if t > 11.0 else 0.0}
    with Drive(rigstage, seconds=18.0) as d:
        return "Reverse at 4 s brakes, pressed again at 8.5 s drives back; a turn from 11 s", {"": d.take(hands)}


def skid_brake():
    def hands(t):
        return {"gas": float(t < 8.0), "steering": 0.8 if 7.5 <= t < 9.5 else 0.0,
                "skid_brake": float(8.0 <= t < 10.0), "skid": float(8.0 <= t < 10.0)}
    with Drive(rigstage, seconds=13.0) as d:
        return "Skid brake in a turn, 8 s to 10 s", {"": d.take(hands)}


def kerb():
    with Drive(rigstage, grounds.kerb(), seconds=10.0) as d:
        return "A kerb of 0.1 m at 15 m", {"": d.take(lambda t: {"gas": 0.5})}


def ramp_jump():
    with Drive(rigstage, grounds.jump(), seconds=12.0) as d:
        return "A ramp of 12 m by 1.2 m, and the landing", {"": d.take(lambda t: {"gas": 1.0})}


def steep_hill():
    with Drive(rigstage, grounds.hill(), seconds=16.0) as d:
        return "A hill of 20 degrees", {"": d.take(lambda t: {"gas": float(t >= 1.0)})}


def rough_terrain():
    with Drive(rigstage, grounds.rough(), seconds=16.0) as d:
        def hands(t):
            return {"gas": 0.6, "steering": 0.3 * math.sin(0.9 * t)}
        firm = d.take(hands)
        softer = d.again(**{"Front Stiffness": 500, "Back Stiffness": 500, "Front Damping": 50,
                            "Back Damping": 50})
        return "Rough terrain; the same performance on springs of 2000 and of 500", {"2000": firm, "500": softer}


def chase():
    with Drive(rigstage, seconds=20.0, **{"Autonomous Mode": True}) as d:
        target = d.car.node("TargetMesh")
        for frame in range(round(20.0 * 25) + 1):
            t = frame / 25.0
            angle = 0.25 * t
            x, z = 20.0 * math.sin(2.0 * angle), -8.0 - 40.0 * (1.0 - math.cos(angle))
            target.set_matrix((1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, z, 1), t, key=True)
        chased = d.take(lambda t: {})
        path = [target.position(t) for t in chased.time]
    return "Autonomous: the car chases its target along a bend", {"car": chased, "_target": path}


def at_rest():
    with Drive(rigstage, grounds.rough(0.05), seconds=10.0) as d:
        return "At rest", {"": d.take(lambda t: {})}


MANOEUVRES = [standing_start, full_speed_turn, slalom, abs_stop, reverse, skid_brake, kerb, ramp_jump,
              steep_hill, rough_terrain, chase, at_rest]


def numbers(motion):
    """What a judge of the motion wants to know: top speed, angles, and the largest change of a change."""
    def jerk(values):
        return max((abs(values[i + 1] - 2 * values[i] + values[i - 1]) for i in range(1, len(values) - 1)),
                   default=0.0)
    last = motion.position[-25:]
    drift = max(math.dist(p, last[0]) for p in last)
    return (f"top {max(motion.speed):6.2f} m/s  pitch {math.degrees(min(motion.pitch)):6.2f} "
            f"{math.degrees(max(motion.pitch)):6.2f}  roll {math.degrees(min(motion.roll)):6.2f} "
            f"{math.degrees(max(motion.roll)):6.2f}  bend of height {jerk([p[1] for p in motion.position]):.4f} m, "
            f"of speed {jerk(motion.speed):.3f} m/s  last second moved {drift:.4f} m")


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else "."
    wanted = sys.argv[2:]
    os.makedirs(folder, exist_ok=True)
    style()
    for manoeuvre in MANOEUVRES:
        if wanted and manoeuvre.__name__ not in wanted:
            continue
        title, motions = manoeuvre()
        path = motions.pop("_target", None)
        figure = panels(title, motions)
        if path:
            figure.axes[0].plot([p[0] for p in path], [-p[2] for p in path], ":", label="target")
            figure.axes[0].legend(fontsize=7)
        figure.savefig(os.path.join(folder, manoeuvre.__name__ + ".png"), dpi=80)
        plt.close(figure)
        for label, motion in motions.items():
            print(f"{manoeuvre.__name__:16} {label:5} {numbers(motion)}")


if __name__ == "__main__":
    main()
