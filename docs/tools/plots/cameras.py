"""One picture for each camera tool, of a take that is driven through the Python module.

Each function takes the module `rigstage` and a matplotlib Axes, records a take on a stage of its own and
plots what the tool does with it. Its name is plot_ and the tool's id in small letters; make_pages.py calls it.
"""

import math

from common import frame_times, held, new_stage


def pose(x=0.0, y=0.0, z=0.0, yaw=0.0):
    """A matrix at a place, turned by yaw [rad] about the vertical."""
    c, s = math.cos(yaw), math.sin(yaw)
    return (c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, x, y, z, 1)


def euler(matrix):
    """Yaw, pitch and roll [degrees] of a matrix: turns about Y, X and Z, roll first."""
    m = matrix
    return (math.degrees(math.atan2(m[8], m[10])),
            math.degrees(math.asin(max(-1.0, min(1.0, -m[9])))),
            math.degrees(math.atan2(m[1], m[5])))


def pad_on(stage, tool, *names):
    """A pad with one axis for each input, bound without a dead zone."""
    pad = stage.add_device("Pad", axes=max(1, len(names)))
    for axis, name in enumerate(names):
        bound = tool.input(name)
        bound.bind(pad, "Axis", axis)
        bound.deadzone = 0.0
    return pad


def step_answer(stage, tool, seconds):
    """The follower's way when its goal jumps by 1 at 0.2 s."""
    goal = tool.node("AttachedCam")
    for t, x in ((0.0, 0.0), (0.2 - stage.frame_duration, 0.0), (0.2, 1.0), (seconds, 1.0)):
        goal.set_matrix(pose(x), t, key=True)
    stage.record(seconds)
    times = frame_times(stage, seconds)
    return times, [tool.node("FollowCam").position(t)[0] for t in times]


def draw_steps(rigstage, axes, type_id, profiles, seconds):
    for profile in profiles:
        with new_stage(rigstage, seconds) as stage:
            tool = stage.create(type_id)
            tool.load_profile(profile)
            axes.plot(*step_answer(stage, tool, seconds), label=profile)
    axes.axhline(1.0, color="0.7", linewidth=0.8)
    axes.set_xlabel("time [s]")
    axes.set_ylabel("FollowCam [m]")
    axes.set_title("The AttachedCam jumps by 1 m at 0.2 s")
    axes.legend()


def plot_motionfiltercam(rigstage, axes):
    draw_steps(rigstage, axes, "MotionFilterCam", ("Tight", "Bouncy", "Smooth Filtering"), 4.0)


def plot_softmotioncam(rigstage, axes):
    draw_steps(rigstage, axes, "SoftMotionCam", ("Start Profile", "FollowCam"), 4.0)


def plot_humanizercam(rigstage, axes):
    seconds = 8.0
    for profile in ("Hand Held Normal", "Hand Held Nervous", "Earthquake"):
        with new_stage(rigstage, seconds) as stage:
            tool = stage.create("HumanizerCam")
            tool.load_profile(profile)
            stage.record(seconds)
            times = frame_times(stage, seconds)
            camera = tool.node("HumanizerCam")
            axes.plot(times, [euler(camera.matrix(t))[0] for t in times], label=profile)
    axes.set_xlabel("time [s]")
    axes.set_ylabel("yaw [degrees]")
    axes.set_title("The shake of a camera that stands still")
    axes.legend()


def plot_autozoomcam(rigstage, axes):
    seconds = 6.0
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create("AutoZoomCam")
        pad = pad_on(stage, tool, "Forw/Backw Transl")
        stage.record(seconds, before_frame=lambda t: pad.set(
            "Axis", 0, held(t, 0.5, 2.0) - held(t, 3.0, 5.0)))
        times = frame_times(stage, seconds)
        camera = tool.node("AutoZoomCam")
        distance = [math.dist(camera.position(t), tool.node("TargetMesh").position(t)) for t in times]
        fov = [camera.fov(t) for t in times]
    size = [d * math.tan(math.radians(f / 2)) for d, f in zip(distance, fov)]
    axes.plot(times, distance, label="distance [m]")
    axes.plot(times, size, label="half height seen at the target [m]")
    axes.set_xlabel("time [s]")
    axes.set_ylabel("[m]")
    lens = axes.twinx()
    lens.plot(times, fov, color="C3")
    lens.set_ylabel("field of view [degrees]", color="C3")
    axes.set_title("Forward, then backward: the target keeps its size")
    axes.set_ylim(1.5, 8.3)  # the legend above the curves
    lens.set_ylim(30.0, 115.0)
    axes.legend(loc="upper left")


def plot_zoomandfocuscam(rigstage, axes):
    seconds = 6.0
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create("ZoomAndFocusCam")
        tool.load_profile("Free Focal Position")
        pad = pad_on(stage, tool, "Focal Position", "Zoom")

        def hand(t):
            pad.set("Axis", 0, held(t, 2.0, 4.0))
            pad.set("Axis", 1, held(t, 0.5, 2.5) - held(t, 3.0, 5.5))

        stage.record(seconds, before_frame=hand)
        times = frame_times(stage, seconds)
        camera = tool.node("Camera")
        axes.plot(times, [camera.fov(t) for t in times], color="C3", label="field of view [degrees]")
        focus = axes.twinx()
        focus.plot(times, [camera.target_distance(t) for t in times], color="C0")
        focus.set_ylabel("target distance [m]", color="C0")
    axes.set_xlabel("time [s]")
    axes.set_ylabel("field of view [degrees]", color="C3")
    axes.set_title("Zoom in and out between the limits; focus from target 1 to 2 and back")


def flight(rigstage, axes, type_id, node, names, hand, seconds, title):
    """A flight from above, an arrow of the view twice a second."""
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create(type_id)
        pad = pad_on(stage, tool, *names)

        def move(t):
            for axis, value in enumerate(hand(t)):
                pad.set("Axis", axis, value)

        stage.record(seconds, before_frame=move)
        times = frame_times(stage, seconds)
        camera = tool.node(node)
        places = [camera.position(t) for t in times]
        axes.plot([-z for _, _, z in places], [x for x, _, _ in places])
        for t in times[::round(0.5 / stage.frame_duration)]:
            m = camera.matrix(t)
            axes.arrow(-m[14], m[12], 0.4 * m[10], -0.4 * m[8], head_width=0.15, color="C3")
    axes.set_aspect("equal")
    axes.invert_yaxis()  # forward along the picture's width: a flight is longer than wide
    axes.set_xlabel("forward [m]")
    axes.set_ylabel("right [m]")
    axes.set_title(title)


def plot_observercam(rigstage, axes):
    names = ("Forw/Backw Speed", "Yaw Speed (Right/Left)", "Save MemReg State", "Transl MemRegulator")

    def hand(t):
        return (0.4 * held(t, 0.2, 5.0), held(t, 1.0, 2.5) - held(t, 3.0, 4.5),
                held(t, 0.0, 0.1), held(t, 6.0, 9.0))

    flight(rigstage, axes, "ObserverCam", "ObserverCam", names, hand, 9.0,
           "Forward with two bends, then called back by the regulator")


def plot_observercamfree(rigstage, axes):
    names = ("Move Forw/Backw", "Rotate Right/Left")
    flight(rigstage, axes, "ObserverCamFree", "ObserverCam", names,
           lambda t: (0.4 * held(t, 0.2, 5.0), held(t, 1.0, 2.5) - held(t, 3.0, 4.5)), 6.0,
           "Forward with a bend to the right and one to the left")


def plot_zerogcam(rigstage, axes):
    names = ("Forw/Backw Force", "Right/Left Force", "Yaw Force (Right/Left)", "Brake All")
    flight(rigstage, axes, "ZeroGCam", "ZeroGCam", names,
           lambda t: (held(t, 0.2, 2.0), held(t, 3.0, 4.0), held(t, 1.0, 2.0), held(t, 8.0, 12.0)),
           12.0, "Pushed forward, turned, pushed right; the brake from 8 s")


def plot_spherecam(rigstage, axes):
    seconds = 8.0
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create("SphereCam")
        pad = pad_on(stage, tool, "Right/Left Transl", "Forw/Backw Transl")
        tool.input("Forw/Backw Transl").multiplier = 0.05

        def hand(t):
            pad.set("Axis", 0, held(t, 0.5, 4.5))
            pad.set("Axis", 1, held(t, 5.0, 6.5))

        stage.record(seconds, before_frame=hand)
        times = frame_times(stage, seconds)
        camera = tool.node("SphereCam")
        places = [camera.position(t) for t in times]
        axes.plot([x for x, _, _ in places], [-z for _, _, z in places])
        for t in times[::round(0.5 / stage.frame_duration)]:
            m = camera.matrix(t)
            axes.arrow(m[12], -m[14], -0.6 * m[8], 0.6 * m[10], head_width=0.2, color="C3")
    axes.plot([0], [0], "o", color="0.4")
    axes.set_aspect("equal")
    axes.set_xlabel("right [m]")
    axes.set_ylabel("forward [m]")
    axes.set_title("Round the target, then nearer")


def plot_lookatcam(rigstage, axes):
    seconds = 4.0
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create("LookAtCam")
        target = tool.node("TargetMesh")
        for i in range(round(seconds / stage.frame_duration) + 1):
            t = i * stage.frame_duration
            target.set_matrix(pose(-6.0 + 3.0 * t, 0.5, 0.0), t, key=True)
        stage.record(seconds)
        times = frame_times(stage, seconds)
        camera = tool.node("LookAtCam")
        axes.plot(times, [euler(camera.matrix(t))[0] for t in times], label="yaw [degrees]")
        axes.plot(times, [euler(camera.matrix(t))[2] for t in times], label="roll [degrees]")
        distance = axes.twinx()
        distance.plot(times, [camera.target_distance(t) for t in times], color="C3")
        distance.set_ylabel("target distance [m]", color="C3")
    axes.set_xlabel("time [s]")
    axes.set_ylabel("[degrees]")
    axes.set_title("A target passes by at 5 m")
    axes.legend(loc="upper center")


def plot_gyro(rigstage, axes):
    seconds = 4.0
    with new_stage(rigstage, seconds) as stage:
        tool = stage.create("Gyro")
        eye = tool.node("eye")

        for t in frame_times(stage, seconds):
            yaw, roll = 0.3 * t, 0.4 * math.sin(5.0 * t)
            c, s, cr, sr = math.cos(yaw), math.sin(yaw), math.cos(roll), math.sin(roll)
            eye.set_matrix((c * cr, sr, -s * cr, 0, -c * sr, cr, s * sr, 0, s, 0, c, 0, 0, 0, 0, 1),
                           t, key=True)
        stage.record(seconds)
        times = frame_times(stage, seconds)
        gyro = tool.node("gyro")
        for index, name in ((0, "yaw"), (2, "roll")):
            axes.plot(times, [euler(gyro.matrix(t))[index] for t in times],
                      label=f"{name} of the gyro")
            axes.plot(times, [euler(eye.matrix(t))[index] for t in times], "--",
                      label=f"{name} of the eye")
    axes.set_xlabel("time [s]")
    axes.set_ylabel("[degrees]")
    axes.set_title("Yaw only: the heading passes, the rocking does not")
    axes.legend()
