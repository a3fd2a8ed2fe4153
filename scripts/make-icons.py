#!/usr/bin/env python3
"""Draws the program's icons: writes every SVG below data/ from the pictograms in this file.

A pictogram is a text of shapes, one a line, on a square grid of its set's size:

    <pen> <shape> <numbers or path>

pen     main, light, soft: a stroke in the category's colour, in near white, in a faded colour;
        with "*" behind it the shape is filled instead; "cut" and "cut*" draw in the ground's colour
shape   line x y x y ...     open polyline
        poly x y x y ...     closed polyline
        circle x y r         ellipse x y rx ry         rect x y width height radius
        path <SVG path data>
        use <pictogram> x y scale [degrees]            another pictogram, its origin at x y

Icons are drawn for a dark window (ground 2b2d31). Run it after a change and commit what it writes:

    scripts/make-icons.py            writes the files
    scripts/make-icons.py --check    writes nothing; 1 when a file differs
"""

import pathlib
import sys

DATA = pathlib.Path(__file__).resolve().parent.parent / "data"

VEHICLE, CAMERA, ACCESSORY, UTILITY, TEMPLATE = "f2a14e", "62b4f5", "7fd07c", "bda2f7", "ecd268"
PLAIN, RED, GREEN, AMBER = "c3c9d2", "f0524f", "5cc46a", "f5b83d"
LIGHT, GROUND = "f3f5f8", "2b2d31"

# A button's states: tile, outline, lightening of the pictogram (-1 black to 1 white), drop in pixels
# of a 64 pixel tile.
STATES = {
    "default": ("36393f", "4a4e56", 0.0, 0.0),
    "hover": ("4a4f58", "7a818d", 0.25, 0.0),
    "pressed": ("1b1d20", "33363c", -0.2, 1.5),
}

# Pictograms that others use. Their origin is the middle.
PARTS = {
    "camera": """
        main* rect -16 -10 21 20 4
        main* poly 7 -3 16 -9 16 9 7 3
        cut* circle -5.5 0 4.2
    """,
    "ghost": """
        soft rect -16 -10 21 20 4
        soft poly 7 -3 16 -9 16 9 7 3
    """,
    "star": """
        light* path M0 -5 L1.3 -1.3 L5 0 L1.3 1.3 L0 5 L-1.3 1.3 L-5 0 L-1.3 -1.3 Z
    """,
    "target": """
        light circle 0 0 8
        light* circle 0 0 2.6
        light line 0 -12 0 -8
        light line 0 8 0 12
        light line -12 0 -8 0
        light line 8 0 12 0
    """,
    "plug": """
        main* path M-6 -3 H6 V3 Q6 8 0 8 Q-6 8 -6 3 Z
        main line -3 -8 -3 -4
        main line 3 -8 3 -4
        main line 0 8 0 12
    """,
}

# 64 x 64, by the tools' data folders: category colour and pictogram.
TOOLS = {
    "carextended": (VEHICLE, """
        main path M13 42 H10 V35 Q10 30 15 29 L20 28 L26 19 H41 L48 28 Q55 29 55 36 V42 H51
        main line 28 42 36 42
        soft line 34 19 34 28
        soft line 21 28 48 28
        light circle 20.5 43 5.5
        light circle 43.5 43 5.5
    """),
    "motionfiltercam": (CAMERA, """
        use camera 34 21 1
        soft line 7 47 11 39 15 54 19 40 23 52 27 44
        light path M27 44 C34 37 40 54 57 45
    """),
    "steadycam": (CAMERA, """
        use ghost 24 26 0.85
        use camera 38 26 0.95
        light path M10 49 C20 40 28 40 36 45 S50 50 55 44
    """),
    "humanizercam": (CAMERA, """
        main* circle 18 20 8
        main path M7 54 V45 Q7 35 18 35 Q25 35 29 41
        use camera 43 34 0.8
        light path M38 20 q-3 -3.5 0 -7
        light path M49 20 q3 -3.5 0 -7
        light path M31 52 q4 -6 8 0 t8 0 t8 0
    """),
    "horrorcam": (CAMERA, """
        light* circle 32 27 5
        light* path M23 42 Q23 33 32 33 Q41 33 41 42 Z
        soft rect 18 18 28 28 3
        main line 16 16 9 9
        main line 9 15 9 9 15 9
        main line 48 16 55 9
        main line 49 9 55 9 55 15
        main line 16 48 9 55
        main line 9 49 9 55 15 55
        main line 48 48 55 55
        main line 49 55 55 55 55 49
    """),
    "autofocuscam": (CAMERA, """
        main circle 29 29 11
        main line 37.5 37.5 46 46
        light line 24 29 34 29
        light line 29 24 29 34
        soft line 9 17 9 9 17 9
        soft line 47 9 55 9 55 17
        soft line 9 47 9 55 17 55
        soft line 47 55 55 55 55 47
    """),
    "observercam": (CAMERA, """
        use camera 33 21 1.15
        light* circle 27 37 3
        light line 26 38 16 55
        light line 27 38 27 55
        light line 28 38 38 55
    """),
    "observercamfree": (CAMERA, """
        use camera 33 32 0.85
        light line 32 18 32 8
        light line 28 12 32 8 36 12
        light line 32 46 32 56
        light line 28 52 32 56 36 52
        light line 14 32 7 32
        light line 11 28 7 32 11 36
        light line 51 32 57 32
        light line 53 28 57 32 53 36
    """),
    "zerogcam": (CAMERA, """
        soft ellipse 32 33 25 10
        use camera 31 33 1.05 -28
        use star 13 14 1
        use star 50 51 0.8
        use star 53 14 0.7
    """),
    "spherecam": (CAMERA, """
        main circle 26 38 17
        soft ellipse 26 38 7.5 17
        soft line 9 38 43 38
        use camera 47 17 0.72 135
    """),
    "utility/lookatcam": (CAMERA, """
        use camera 20 41 0.8 -35
        light line 31 33 32 32
        light line 36 29 37 28
        use target 46 19 0.85
    """),
    "utility/gyro": (UTILITY, """
        main circle 32 32 21
        light ellipse 32 32 20 7
        main* circle 32 32 5
        main line 32 8 32 56
        light* circle 32 9 3
        light* circle 32 55 3
    """),
    "utility/statemachine": (UTILITY, """
        main circle 32 16 7.5
        main circle 15 46 7.5
        main* circle 49 46 9
        light path M40 19 Q48 23 50 33
        light line 45 29 50 34 54 28
        light path M38 50 Q32 53 25 50
        light line 30 46 25 50 30 55
        light path M14 36 Q15 25 22 20
        light line 16 20 23 19 22 26
    """),
    "multistatecam": (CAMERA, """
        use camera 33 22 1.1
        light line 12 47 52 47
        cut* circle 13 47 7
        cut* circle 32 47 7
        cut* circle 51 47 7
        light circle 13 47 5.5
        light circle 51 47 5.5
        light* circle 32 47 7
    """),
    "directinputlink": (ACCESSORY, """
        main* rect 8 44 26 10 4
        main line 21 44 21 26
        main* circle 21 19 7
        light line 34 27 45 27
        light line 40 22 45 27 40 32
        light rect 48 19 8 16 3
        soft path M40 49 Q52 49 52 40
    """),
    "utility/1dpositioner": (UTILITY, """
        soft line 8 43 56 43
        soft line 8 38 8 48
        soft line 56 38 56 48
        main* rect 23 33 18 20 4
        light line 14 21 50 21
        light line 20 15 14 21 20 27
        light line 44 15 50 21 44 27
    """),
    "utility/1drotator": (UTILITY, """
        light path M15.5 40.5 A18.5 18.5 0 1 1 36 50
        light line 41.5 44.5 35 50 42 55
        main* circle 32 32 7
        main line 32 32 45 23
    """),
    "utility/activescaler": (UTILITY, """
        soft rect 9 9 46 46 5
        main* rect 9 35 20 20 4
        light line 32 32 47 17
        light line 38 16 48 16 48 26
    """),
    "utility/rectangularplay": (UTILITY, """
        main rect 8 14 48 36 3
        light* rect 23 25 18 14 3
        soft line 13 32 19 32
        soft line 45 32 51 32
        soft line 32 18 32 21
        soft line 32 43 32 46
    """),
    "utility/sphericalplay": (UTILITY, """
        main circle 32 32 23
        soft line 20 44 27 37
        soft line 19.5 37.5 20 44 26.5 44.5
        light* circle 38 26 9
    """),
    "utility/angularplay": (UTILITY, """
        main line 14 13 32 52 50 13
        soft ellipse 32 13 18 5
        light line 32 52 38 17
        light* circle 38.5 15 4.5
        main* circle 32 52 4
    """),
    "utility/distanceruler": (UTILITY, """
        main* circle 11 20 5
        main* circle 53 20 5
        light line 20 20 44 20
        light line 24 16 20 20 24 24
        light line 40 16 44 20 40 24
        main rect 7 35 50 15 3
        soft line 16 36 16 42
        soft line 24 36 24 44
        soft line 32 36 32 42
        soft line 40 36 40 44
        soft line 48 36 48 42
    """),
    "utility/angleruler": (UTILITY, """
        main line 47 13 11 51 55 51
        light path M36 51 A25 25 0 0 0 28.2 32.9
        soft line 46 45 51 43.6
        soft line 42.8 37.4 47.3 34.8
        soft line 37.7 31.5 40 29.3
        main* circle 11 51 3
    """),
    "utility/scaleruler": (UTILITY, """
        main* rect 9 40 14 14 3
        main rect 28 27 27 27 3
        light line 9 14 55 14
        light line 9 9 9 19
        light line 55 9 55 19
        soft line 20.5 14 20.5 18
        soft line 32 14 32 18
        soft line 43.5 14 43.5 18
    """),
    "utility/raycaster": (UTILITY, """
        main* circle 17 13 5
        light line 20 18 34 41
        light line 26 39 35 42 36 33
        main path M7 49 Q20 44 33 46 T57 43
        soft line 12 56 18 48
        soft line 24 56 30 47
        soft line 36 56 42 47
        soft line 48 55 53 46
        soft line 38 40 46 26
    """),
    "utility/sinusoid": (UTILITY, """
        soft line 9 9 9 55
        soft line 9 32 57 32
        main path M9 32 C14 8 21 8 26 20 C30 30 30 34 34 44 C39 56 46 56 52 32
        light* circle 52 32 5
    """),
    "core/template": (TEMPLATE, """
        main poly 32 9 53 19 53 43 32 55 11 43 11 19
        main line 11 19 32 30 53 19
        main line 32 30 32 55
        light line 22 14 43 25 43 33
    """),
    "core/emptyplugin": (TEMPLATE, """
        main path M9 48 V17 Q9 14 12 14 H25 L30 20 H52 Q55 20 55 23 V48 Q55 51 52 51 H12 Q9 51 9 48 Z
        light line 32 28 32 43
        light line 24.5 35.5 39.5 35.5
    """),
}

# 64 x 64: a category's button while it has no current tool. Drawn on its colour.
CATEGORIES = {
    "veh": (VEHICLE, """
        cut path M14 37 L19 24 Q20 20 24 20 H40 Q44 20 45 24 L50 37
        cut* path M10 49 V39 Q10 36 14 36 H50 Q54 36 54 39 V49 Q54 51 52 51 H47 Q45 51 45 49 V47 H19 V49 Q19 51 17 51 H12 Q10 51 10 49 Z
        main* circle 18.5 41.5 2.8
        main* circle 45.5 41.5 2.8
    """),
    "cam": (CAMERA, """
        cut* circle 21 20 8
        cut* circle 38 20 8
        main* circle 21 20 2.6
        main* circle 38 20 2.6
        cut* rect 10 30 34 22 5
        cut* poly 46 38 56 32 56 50 46 44
    """),
    "acc": (ACCESSORY, """
        cut* poly 28.4 14.4 28.5 8.3 35.5 8.3 35.6 14.4 41.9 17.0 46.3 12.7 51.3 17.7 47.0 22.1 49.6 28.4 55.7 28.5 55.7 35.5 49.6 35.6 47.0 41.9 51.3 46.3 46.3 51.3 41.9 47.0 35.6 49.6 35.5 55.7 28.5 55.7 28.4 49.6 22.1 47.0 17.7 51.3 12.7 46.3 17.0 41.9 14.4 35.6 8.3 35.5 8.3 28.5 14.4 28.4 17.0 22.1 12.7 17.7 17.7 12.7 22.1 17.0
        main* circle 32 32 8.5
    """),
    "prm": (TEMPLATE, """
        cut* poly 32 8 53 18.5 32 29 11 18.5
        cut* poly 9.5 22.5 30 32.5 30 56 9.5 45.5
        cut* poly 54.5 22.5 34 32.5 34 56 54.5 45.5
    """),
}

# 32 x 32
BUTTONS = {
    "btn_group": """
        main path M5 23 V9.5 Q5 8 6.5 8 H12 L14.5 11 H25.5 Q27 11 27 12.5 V23 Q27 24.5 25.5 24.5 H6.5 Q5 24.5 5 23 Z
        light line 16 14.5 16 21
        light line 12.7 17.8 19.3 17.8
    """,
    "btn_config": """
        main line 6 9 26 9
        main line 6 16 26 16
        main line 6 23 26 23
        light* circle 19 9 3.1
        light* circle 11 16 3.1
        light* circle 22 23 3.1
    """,
    "btn_input": """
        main* path M10 9.5 H22 Q27 9.5 28 17 Q28.6 23.5 25.5 23.5 Q23.6 23.5 21 19.5 H11 Q8.4 23.5 6.5 23.5 Q3.4 23.5 4 17 Q5 9.5 10 9.5 Z
        cut line 8.8 14.3 13.2 14.3
        cut line 11 12.1 11 16.5
        cut* circle 20 15.9 1.4
        cut* circle 22.6 12.9 1.4
    """,
    "btn_clone": """
        main rect 5.5 5.5 15 15 2.5
        light* rect 11.5 11.5 15 15 2.5
    """,
    "btn_unplug": """
        use plug 10.5 19.5 0.72 45
        light path M27 5 Q25 8 23.5 8.5
        light path M16.6 10.1 L21.9 15.4 L24 13.3 Q26.8 10.3 24 7.8 Q21.4 5.4 18.6 8 Z
    """,
    "btn_unplugall": """
        use plug 10 21 0.62
        use plug 22 21 0.62
        light line 5 10 15 10
        light line 17 10 27 10
        light line 10 5 10 9
        light line 22 5 22 9
    """,
    "btn_delete": """
        main path M8.5 10.5 L9.7 25 Q9.9 26.5 11.4 26.5 H20.6 Q22.1 26.5 22.3 25 L23.5 10.5
        light line 6 9.5 26 9.5
        light path M12.5 9 V7 Q12.5 5.5 14 5.5 H18 Q19.5 5.5 19.5 7 V9
        main line 13.8 14.5 14.2 22.3
        main line 18.2 14.5 17.8 22.3
    """,
}

# 32 x 32, no tile: what a binding comes from.
DEVICES = {
    "icon_inputs_wacom": """
        main rect 3.5 12 20 14 2.5
        soft rect 7 15 13 8 1
        light line 14 19 25 6
        light* path M26.6 7.4 L29 4.5 L26.2 2.4 L23.8 5.2 Z
    """,
    "icon_inputs_connexion": """
        main path M4 24.5 Q4 21 8 21 H24 Q28 21 28 24.5 Q28 27.5 24.5 27.5 H7.5 Q4 27.5 4 24.5 Z
        main* path M10.5 18.5 L9.2 12 Q9 9.5 12 9.2 H20 Q23 9.5 22.8 12 L21.5 18.5 Z
        light path M7 8.5 Q16 2.2 25 8.5
        light line 25.4 4.6 25.2 8.7 21 8.4
    """,
    "icon_inputs_gamepad": """
        use pad 0 0 1
    """,
    "icon_inputs_keyboard": """
        main rect 3 8.5 26 16 3
        light line 7.5 13 8 13
        light line 12 13 12.5 13
        light line 16.5 13 17 13
        light line 21 13 21.5 13
        light line 25 13 25 13
        light line 7.5 16.7 8 16.7
        light line 12 16.7 12.5 16.7
        light line 16.5 16.7 17 16.7
        light line 21 16.7 21.5 16.7
        light line 25 16.7 25 16.7
        light line 10 20.5 22 20.5
    """,
}
PARTS["pad"] = BUTTONS["btn_input"]

# 16 x 16, no tile: name, colour, pictogram.
SMALL = {
    "toggle_record": (RED, "main* circle 8 8 5.5"),
    "toggle_semirecord": (RED, """
        main circle 8 8 5
        main* path M8 3 A5 5 0 0 0 8 13 Z
    """),
    "toggle_low-poly": (VEHICLE, """
        main poly 8 2 13.8 6.5 11.5 13.5 4.5 13.5 2.2 6.5
        soft line 8 2.5 8 8 2.7 6.6
        soft line 8 8 13.3 6.6
        soft line 4.7 13 8 8 11.3 13
    """),
    "toggle_hi-poly": (CAMERA, """
        main circle 8 8 6
        soft ellipse 8 8 2.6 5.8
        soft line 2.2 8 13.8 8
        soft line 3.4 4.9 12.6 4.9
        soft line 3.4 11.1 12.6 11.1
    """),
    "toggle_bullet": ("767b84", "main* circle 8 8 2"),
    "treeicons/tarvo_vehicle_tools": (VEHICLE, """
        main* path M1 11 V8.6 Q1 7.2 2.6 7 L4.6 3.9 Q5 3.2 6 3.2 H9.8 Q10.6 3.2 11.1 3.8 L13.2 6.8 Q15 7.1 15 8.8 V11 Z
        cut* circle 4.6 11 2.9
        cut* circle 11.4 11 2.9
        light* circle 4.6 11.3 1.9
        light* circle 11.4 11.3 1.9
    """),
    "treeicons/tarvo_camera_tools": (CAMERA, """
        main* rect 1 4 9 8.5 2
        main* poly 11.2 7.3 15 4.7 15 11.8 11.2 9.2
        cut* circle 5.5 8.2 2
    """),
    "treeicons/tarvo_accessory_tools": (ACCESSORY, """
        main circle 8 8 3.6
        main line 8 1.6 8 4
        main line 8 12 8 14.4
        main line 1.6 8 4 8
        main line 12 8 14.4 8
        main line 3.5 3.5 5.2 5.2
        main line 10.8 10.8 12.5 12.5
        main line 3.5 12.5 5.2 10.8
        main line 10.8 5.2 12.5 3.5
    """),
    "treeicons/group": (TEMPLATE, """
        main* path M1 12.5 V3.8 Q1 3 1.8 3 H5.6 L7.2 4.8 H14.2 Q15 4.8 15 5.6 V12.5 Q15 13.3 14.2 13.3 H1.8 Q1 13.3 1 12.5 Z
        cut line 2.5 7.3 13.5 7.3
    """),
    "treeicons/template": (TEMPLATE, """
        main* poly 8 1.2 14 4.3 8 7.4 2 4.3
        main* poly 1.4 5.6 7.3 8.6 7.3 15 1.4 12
        main* poly 14.6 5.6 8.7 8.6 8.7 15 14.6 12
    """),
}

# 24 x 24, no tile.
SIGNS = {
    "ok": (GREEN, """
        main* circle 12 12 10
        cut line 7 12.5 10.6 16 17 8.5
    """),
    "warning": (AMBER, """
        main* path M12 2.2 Q13.2 2.2 13.9 3.4 L22.6 18.8 Q23.9 21.6 21 21.8 H3 Q0.1 21.6 1.4 18.8 L10.1 3.4 Q10.8 2.2 12 2.2 Z
        cut line 12 8.5 12 14
        cut* circle 12 17.9 1.5
    """),
}

# The product: a performed curve with a key on it, and the light of a recording.
PRODUCT_64 = """
    light path M8 46 C18 46 20 18 31 18 S42 42 56 40
    light* poly 31 11 38 18 31 25 24 18
    main* circle 49 17 6.5
"""
PRODUCT_16 = """
    light path M2 11.8 C5 11.8 5 5.2 8 5.2 S11 10.8 14 10.2
    main* circle 12.6 4 2.3
"""


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".") or "0"


def mixed(colour, other, share):
    """colour with a share of other, both as rrggbb."""
    channels = (
        round(int(colour[i:i + 2], 16) * (1 - share) + int(other[i:i + 2], 16) * share)
        for i in (0, 2, 4)
    )
    return "".join(f"{channel:02x}" for channel in channels)


def shifted(colour, amount):
    return mixed(colour, "ffffff" if amount > 0 else "000000", abs(amount))


class Pens:
    """The colours of one icon, and its line width on its own grid."""

    def __init__(self, main, ground, width, amount=0.0):
        self.width = width
        self.colours = {
            "main": shifted(main, amount),
            "light": shifted(LIGHT, min(amount, 0.0)),
            "soft": mixed(shifted(main, amount), ground, 0.45),
            "cut": ground,
        }

    def attributes(self, pen, scale):
        colour = self.colours[pen.rstrip("*")]
        if pen.endswith("*"):
            return f'fill="#{colour}"'
        return (f'fill="none" stroke="#{colour}" stroke-width="{number(self.width / scale)}" '
                'stroke-linecap="round" stroke-linejoin="round"')


def shape(kind, words, attributes):
    if kind == "path":
        return f'<path d="{" ".join(words)}" {attributes}/>'
    values = [float(word) for word in words]
    if kind in ("line", "poly"):
        points = " ".join(f"{number(x)},{number(y)}" for x, y in zip(values[::2], values[1::2]))
        return f'<poly{"line" if kind == "line" else "gon"} points="{points}" {attributes}/>'
    names = {"circle": "cx cy r", "ellipse": "cx cy rx ry", "rect": "x y width height rx"}[kind]
    placed = " ".join(f'{key}="{number(value)}"' for key, value in zip(names.split(), values, strict=True))
    return f"<{kind} {placed} {attributes}/>"


def draw(pictogram, pens, scale=1.0):
    lines = []
    for row in pictogram.strip().splitlines():
        pen, kind, *words = row.split()
        if pen == "use":
            x, y, factor, *turn = (float(word) for word in words)
            place = f"translate({number(x)} {number(y)})"
            place += f" rotate({number(turn[0])})" if turn else ""
            place += f" scale({number(factor)})" if factor != 1 else ""
            lines.append(f'<g transform="{place}">')
            lines += draw(PARTS[kind], pens, scale * factor)
            lines.append("</g>")
        else:
            lines.append(shape(kind, words, pens.attributes(pen, scale)))
    return lines


def svg(size, lines):
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" '
            f'viewBox="0 0 {size} {size}">')
    return "\n".join([head, *lines, "</svg>"]) + "\n"


def tile(size, fill, outline):
    return (f'<rect x="1" y="1" width="{size - 2}" height="{size - 2}" rx="{number(size * 0.17)}" '
            f'fill="#{fill}" stroke="#{outline}" stroke-width="{number(1 + size / 64)}"/>')


def tool_button(size, state, colour, pictogram, width):
    fill, outline, amount, drop = STATES[state]
    moved = f'<g transform="translate(0 {number(drop * size / 64)})">'
    return svg(size, [tile(size, fill, outline), moved,
                      *draw(pictogram, Pens(colour, fill, width, amount), 1.0), "</g>"])


def category_button(state, colour, pictogram):
    _, _, amount, drop = STATES[state]
    fill = shifted(colour, amount)
    moved = f'<g transform="translate(0 {number(drop)})">'
    outline = shifted(colour, amount + (0.3 if amount >= 0 else -0.3))
    pens = Pens(fill, "26282c", 4)
    return svg(64, [tile(64, fill, outline), moved, *draw(pictogram, pens), "</g>"])


def icons():
    """Path below data/ and text of each icon."""
    for state in STATES:
        for folder, (colour, pictogram) in TOOLS.items():
            yield (f"{folder}/images/button_product_{state}.svg",
                   tool_button(64, state, colour, pictogram, 3.6))
        suffix = "" if state == "default" else "_" + state
        for name, (colour, pictogram) in CATEGORIES.items():
            yield f"core/images/{name}{suffix}.svg", category_button(state, colour, pictogram)
        for name, pictogram in BUTTONS.items():
            yield (f"core/images/{name}{suffix}.svg",
                   tool_button(32, state, PLAIN, pictogram, 2.2))
    for name, pictogram in DEVICES.items():
        yield f"core/images/{name}.svg", svg(32, draw(pictogram, Pens(PLAIN, GROUND, 2.2)))
    for name, (colour, pictogram) in SMALL.items():
        yield f"core/images/{name}.svg", svg(16, draw(pictogram, Pens(colour, "1f2124", 1.4)))
    for name, (colour, pictogram) in SIGNS.items():
        yield f"core/images/{name}.svg", svg(24, draw(pictogram, Pens(colour, "26282c", 2.4)))
    for size, width, pictogram in ((64, 5, PRODUCT_64), (16, 1.7, PRODUCT_16)):
        yield (f"core/images/tarvo_ico_{size}.svg",
               svg(size, [tile(size, "1d4f86", "4f97dd"), *draw(pictogram, Pens(RED, "1d4f86", width))]))


def main(arguments):
    stale = 0
    for path, text in icons():
        file = DATA / path
        if file.exists() and file.read_text() == text:
            continue
        stale += 1
        if "--check" in arguments:
            print(f"{file} differs from what this script draws")
            continue
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
    return 1 if stale and "--check" in arguments else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
