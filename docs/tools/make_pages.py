#!/usr/bin/env python3
"""Makes the page of each tool: its text, its picture, and what its own tables say of it.

Usage: make_pages.py           writes docs/tools/*.md and docs/images/tools/*.png
       make_pages.py --pages   the pages alone (no matplotlib needed)
       make_pages.py --check   writes nothing; fails where a page is not what it would be now

The text of a tool is text/<its id in small letters>.md: the title, a sentence that also stands in the
list of all tools, and more. Its picture is made by plot_<the same> in plots/, except where the text
shows one itself. The module `rigstage` must be on PYTHONPATH.
"""

import argparse
import io
import math
import pathlib
import re
import sys
import tempfile

import rigstage

HERE = pathlib.Path(__file__).resolve().parent
IMAGES = HERE.parent / "images" / "tools"
MOST_BYTES = 60_000  # of a picture

KINDS = ((1, "button"), (2, "two keys"), (4, "axis"), (8, "output of a tool"))

# Tool, label, unit: the tables do not hold units. The first that fits; share: of the way that is left.
UNITS = (
    ("MotionFilterCam", r"Response Factor$", "1/s²"),
    ("MotionFilterCam", r"Smoothing Factor$", "1/s"),
    ("MotionFilterCam", r"Translation Max", "units/s"),
    ("MotionFilterCam", r"Rotation Max", "rad/s"),
    ("HumanizerCam", r"Threshold$", "%"),
    ("", r"(Response|Smoothing) Factor$|Resp Fact$|Follow Strength Response", "share per 0.04 s"),
    ("", r"[Dd]egs/sec", "degrees/s"),
    ("", r"FOV Maximum Rate", "degrees/s"),
    ("", r"units/sec|Linear Velocity", "units/s"),
    ("", r"FOV$|^Field Of View|^Degrees Per Ray", "degrees"),
    ("", r"^Target Distance$|Distance$(?<!In Limits Distance)", "units"),
    ("AngleRuler", r"Velocity$", "rad/s"),
    ("AngleRuler", r"Angle$", "rad"),
    ("Sinusoid", r"Frequency$", "rad/s"),
    ("Sinusoid", r"Value$|Amplitude$", "units"),
    ("ObserverCam$", r"Frequency$", "Hz"),
    ("ObserverCam$", r"(Yaw|Pitch|Roll) Speed .*Maximum$", "rad/s"),
    ("ObserverCam$", r"Speed Maximum$", "units/s"),
    ("ZeroGCam", r"(Yaw|Pitch|Roll) Force .*Maximum$", "rad/s²"),
    ("ZeroGCam", r"Force Maximum$", "units/s²"),
    ("", r"Change Limit$|Focal Position Speed$", "1/s"),
    ("(DirectInputLink|1D)", r"(Yaw|Pitch|Roll) .*Maximum$", "rad"),
    ("(DirectInputLink|1D)", r"Transl Maximum$", "units"),
    ("4WheelerExt", r"Steering Wheel .*Maximum$|Tilt Angle$", "rad"),
    ("4WheelerExt", r"Steering Change Velocity$", "rad/s"),
    ("4WheelerExt", r"% of max", "%"),
    ("4WheelerExt", r"\(seconds", "s"),
)


def number(value):
    return f"{value:.10g}"


def cell(text):
    return " ".join(str(text).split()).replace("|", "\\|")


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(map(cell, row)) + " |" for row in rows])


def unit(tool, label):
    for of_tool, of_label, text in UNITS:
        if re.match(of_tool, tool.type) and re.search(of_label, label):
            return text
    return ""


def choices(tool, name):
    """The texts of a combo box: the module takes one by its number too, and holds it to the last."""
    chosen = tool.get(name)
    texts = []
    for index in range(100):
        tool.set(name, index)
        if tool.get(name) in texts:
            break
        texts.append(tool.get(name))
    tool.set(name, chosen)
    return texts


def item_row(tool, item, live):
    numeric = item.kind in ("spinner", "integer")
    limits = f"{number(item.minimum)} to {number(item.maximum)}" if numeric else ""
    if item.kind == "combobox":
        limits = ", ".join(choices(tool, f"{item.group}/{item.label}"))
    default = {True: "on", False: "off", None: ""}.get(item.value, item.value) \
        if isinstance(item.value, (bool, type(None))) else item.value
    return (item.label, item.kind, limits, number(item.step) if numeric else "",
            number(default) if numeric else default, unit(tool, item.label) if numeric else "",
            "yes" if item.label in live else "", item.tooltip)


def item_tables(tool):
    """A table for each group; neighbours that say the same share one."""
    live = {i.name.removeprefix("Spinner: ") for i in tool.inputs if i.name.startswith("Spinner: ")}
    groups = []
    for item in tool.items:
        row = item_row(tool, item, live)
        if groups and groups[-1][0] == item.group:
            groups[-1][1].append(row)
        else:
            groups.append((item.group, [row]))
    shared = []
    for name, rows in groups:
        if shared and shared[-1][1] == rows:
            shared[-1][0].append(name)
        else:
            shared.append(([name], rows))
    head = ("Item", "Kind", "Range", "Step", "Default", "Unit", "Live", "What it does")
    for names, rows in shared:
        title = names[0].replace("/", " / ") or "Ahead of the groups"
        if len(names) > 1:
            title += f" to {names[-1].split('/')[-1]}"
        yield f"### {title}\n\n{table(head, rows)}"


def binding(found):
    """What an input is bound to, short: "W / S", "Axis 2, reversed"."""
    control = found.control
    if control is None:
        return ""
    pair = re.fullmatch(r"emulated control \([^:]*:(.*), [^:]*:(.*)\)", control)
    text = " / ".join(pair.groups()) if pair else control
    return text.replace("_", " ") + (", reversed" if found.multiplier < 0 else "")


def input_table(tool):
    inputs = [i for i in tool.inputs if not i.name.startswith("Spinner: ")]
    if not inputs:
        return "None but those of the live items."
    profiles = [p for p in sorted(tool.input_profiles, key=lambda p: p != "Start Profile")
                if p != "Factory Settings"]
    columns = []
    for profile in profiles:
        tool.load_input_profile(profile)
        columns.append([binding(i) for i in inputs])
    tool.load_input_profile("Start Profile")
    takes = [", ".join(text for bit, text in KINDS if i.kind_mask & bit) for i in inputs]
    head = ("Input", "Takes", *profiles)
    return table(head, zip((i.name for i in inputs), takes, *columns))


def differs(value, fresh):
    """Profiles hold fewer digits than the tools."""
    if isinstance(value, float):
        return not math.isclose(value, fresh, rel_tol=1e-6, abs_tol=1e-9)
    return value != fresh


def shown(value):
    if isinstance(value, bool):
        return "on" if value else "off"
    return number(value) if isinstance(value, (int, float)) else f'"{value}"'


def profile_table(tool):
    """What each shipped profile sets otherwise than a new tool has it."""
    def values():
        return {(i.group, i.label): i.value for i in tool.items if i.kind not in ("button", "label")}

    fresh = values()
    rows = []
    for profile in tool.profiles:
        if profile in ("Start Profile", "Factory Settings"):
            continue
        tool.load_profile(profile)
        rows.append((profile, "; ".join(f"{label} {shown(value)}" for (group, label), value in values().items()
                                        if differs(value, fresh[group, label])) or "as a new one"))
        tool.load_profile("Factory Settings")
    if not rows:
        return "A new one has the values above; none are shipped beside them."
    return table(("Profile", "Sets"), rows)


def node_table(tool):
    def short(node):
        return node.name.removeprefix(tool.name + "_")

    return table(("Node", "Kind", "Child of"),
                 [(f"`{short(n)}`", n.kind, f"`{short(n.parent)}`" if n.parent else "") for n in tool.nodes])


def page_name(type_id):
    return re.sub(r"\W", "", type_id).lower()


def text_of(type_id):
    """Title and text, the title's line apart."""
    title, _, text = (HERE / "text" / f"{page_name(type_id)}.md").read_text().partition("\n")
    return title.removeprefix("# "), text.strip()


def has_plot(type_id):
    return "![" not in text_of(type_id)[1]


def page(kind, tool):
    title, text = text_of(kind.id)
    picture = f"![{title} in a take](../images/tools/{page_name(kind.id)}.png)\n\n" if has_plot(kind.id) else ""
    ids = "".join(f", once `{old}`" for old in kind.old_ids)
    outputs = "\n".join(f"- {name}" for name in tool.outputs) or "None."
    parts = [f"# {title}", f"{kind.category}; its id is `{kind.id}`{ids}. [All tools](README.md)", text]
    inputs = input_table(tool)  # before the profiles change values
    parts += [picture + "## Inputs", inputs, "## Outputs", outputs, "## Nodes", node_table(tool),
              "## Items", "A live item can be turned in a take: it has an input \"Spinner: \" and its name.",
              *item_tables(tool), "## Profiles", profile_table(tool)]
    return "\n\n".join(parts) + "\n"


def first_sentence(text):
    return re.split(r"(?<=[.!?])\s", " ".join(text.split()), maxsplit=1)[0]


def list_of_tools(kinds):
    parts = ["# The tools",
             "Each page tells what a tool is for and how to set it up, and lists its inputs, outputs, nodes, items and\n"
             "profiles. A factor whose unit is \"share per 0.04 s\" says how much of the way that is left is covered in that\n"
             "time: 0.1 glides, 1 is there at once. Lengths are in scene units (metres, as the tools are shipped). Input\n"
             "profiles name the controls of one pad; any other is bound in the input window.",
             "The pages are made by `make_pages.py` from the tools' own tables and the texts in `text/`; a test tells when\n"
             "they no longer fit."]
    others = sorted({k.category for k in kinds} - {"Vehicle", "Camera"})
    for category in ("Vehicle", "Camera", *others):
        rows = []
        for kind in sorted((k for k in kinds if k.category == category), key=lambda k: k.id.lower()):
            title, text = text_of(kind.id)
            rows.append(f"- [{title}]({page_name(kind.id)}.md): {first_sentence(text)}")
        parts.append(f"## {category}\n\n" + "\n".join(rows))
    return "\n\n".join(parts) + "\n"


def make_pages(kinds):
    pages = {"README.md": list_of_tools(kinds)}
    for kind in kinds:
        with tempfile.TemporaryDirectory() as user, rigstage.Stage(user_folder=user) as stage:
            stage.add_device("Pad", axes=8, sliders=2, hats=2, buttons=16)  # what profiles bind to
            pages[f"{page_name(kind.id)}.md"] = page(kind, stage.create(kind.id))
    return pages


def draw(kinds):
    import matplotlib
    matplotlib.use("Agg")
    from matplotlib import pyplot
    from PIL import Image

    sys.path.insert(0, str(HERE / "plots"))
    import accessories
    import cameras

    IMAGES.mkdir(parents=True, exist_ok=True)
    for kind in filter(lambda k: has_plot(k.id), kinds):
        name = page_name(kind.id)
        plot = getattr(cameras, f"plot_{name}", None) or getattr(accessories, f"plot_{name}")
        figure, axes = pyplot.subplots(figsize=(7, 4))
        plot(rigstage, axes)
        picture = io.BytesIO()
        figure.savefig(picture, dpi=90, bbox_inches="tight")
        pyplot.close(figure)
        Image.open(picture).convert("RGB").quantize(64).save(IMAGES / f"{name}.png", optimize=True)


def faults(pages, kinds):
    """What is not as it should be, one line each."""
    for name, text in pages.items():
        file = HERE / name
        if not file.exists() or file.read_text() != text:
            yield f"{file}: not what the tool's tables say now"
    names = {page_name(k.id) for k in kinds}
    for stray in {p.stem for p in (*HERE.glob("*.md"), *HERE.glob("text/*.md"))} - names - {"README"}:
        yield f"{stray}: there is no such tool"
    pictures = {page_name(k.id) for k in kinds if has_plot(k.id)}
    found = {p.stem for p in IMAGES.glob("*.png")}
    for name in sorted(pictures ^ found):
        yield f"{IMAGES / name}.png: {'no tool shows it' if name in found else 'is missing'}"
    for file in IMAGES.glob("*.png"):
        if file.stat().st_size > MOST_BYTES:
            yield f"{file}: {file.stat().st_size} bytes, {MOST_BYTES} are enough"


def main():
    parser = argparse.ArgumentParser(description="Makes the pages of the tools.")
    what = parser.add_mutually_exclusive_group()
    what.add_argument("--pages", action="store_true", help="write the pages alone, without pictures")
    what.add_argument("--check", action="store_true", help="write nothing; fail where a page is stale")
    asked = parser.parse_args()

    kinds = rigstage.tool_types()
    pages = make_pages(kinds)
    if not asked.check:
        for name, text in pages.items():
            (HERE / name).write_text(text)
        if not asked.pages:
            draw(kinds)
    found = list(faults(pages, kinds))
    print("\n".join(found + (["run docs/tools/make_pages.py"] if found else [])), file=sys.stderr, end="")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
