"""One picture for each accessory, of a take that is driven through the Python module.

Each function takes the module `rigstage` and a matplotlib Axes, records a take on a stage of its own and
plots what the tool does with it. Its name is plot_ and the tool's id in small letters; make_pages.py calls it.
"""

import math

from common import frame_times, held, new_stage


def place(x=0.0, y=0.0, z=0.0, scale=(1.0, 1.0, 1.0), yaw=0.0):
    """A matrix at a place, scaled, then turned by yaw [rad] about the vertical."""
    c, s = math.cos(yaw), math.sin(yaw)
    sx, sy, sz = scale
    return (c * sx, 0, -s * sx, 0, 0, sy, 0, 0, s * sz, 0, c * sz, 0, x, y, z, 1)


def key(node, times, matrix_at):
    for t in times:
        node.set_matrix(matrix_at(t), t, key=True)


def bind_axes(stage, tool, *names):
    """A pad with one axis for each input, as it comes: no dead zone, no sign."""
    pad = stage.add_device("Pad", axes=len(names))
    for axis, name in enumerate(names):
        bound = tool.input(name)
        bound.bind(pad, "Axis", axis)
        bound.deadzone, bound.multiplier = 0.0, 1.0
    return pad


def column_length(matrix, c):
    return math.dist((0, 0, 0), matrix[4 * c:4 * c + 3])


def plot_statemachine(rigstage, axes):
    """A machine goes from state to state, softly and under its speed limit."""
    seconds = 12.0
    with new_stage(rigstage, seconds) as stage:
        machine = stage.create("StateMachine")
        names = ("01WantedState", "02WantedState", "03WantedState")
        for name, x in zip(names, (0.0, 4.0, 1.5)):
            machine.node(name).set_local_matrix(place(x))
        machine.set("StateMachine Parameters/Maximum Linear Velocity (units/sec)", 2.5)
        machine.set("StateMachine Parameters/Linear Response Factor", 0.2)
        pad = bind_axes(stage, machine, *names)
        presses = ((1, 1.0), (2, 5.0), (0, 8.0))

        def hand(t):
            for state, begin in presses:
                pad.set("Axis", state, held(t, begin, begin + 0.2))

        stage.record(seconds, before_frame=hand)
        node = machine.node("CurrentState")
        times = frame_times(stage, seconds)
        axes.plot(times, [node.position(t)[0] for t in times], label="CurrentState")
        for name in names:
            axes.axhline(machine.node(name).position(0.0)[0], color="0.8", zorder=0)
        for state, begin in presses:
            axes.axvline(begin, color="C1", linestyle=":")
            axes.text(begin + 0.05, 4.25, names[state][:2], color="C1")
        axes.set(xlabel="time [s]", ylabel="x in the cage [units]", ylim=(-0.3, 4.6),
                 title="Three states, tapped one after another")
        axes.legend(loc="center right")


def plot_multistatecam(rigstage, axes):
    """The lens travels with the camera."""
    seconds = 8.0
    with new_stage(rigstage, seconds) as stage:
        camera = stage.create("MultiStateCam")
        for name, fov, distance in (("CurrentState", 50, 4), ("01WantedState", 50, 4),
                                    ("02WantedState", 18, 10)):
            camera.node(name).set_fov(fov)
            camera.node(name).set_target_distance(distance)
        camera.node("CurrentState").set_matrix(camera.node("01WantedState").matrix())
        pad = bind_axes(stage, camera, "01WantedState", "02WantedState")

        def hand(t):
            pad.set("Axis", 1, held(t, 1.0, 1.2))
            pad.set("Axis", 0, held(t, 5.0, 5.2))

        stage.record(seconds, before_frame=hand)
        node = camera.node("CurrentState")
        times = frame_times(stage, seconds)
        axes.plot(times, [node.fov(t) for t in times], label="field of view [degrees]")
        axes.plot(times, [node.target_distance(t) for t in times], label="target distance [units]")
        axes.plot(times, [10 * math.dist(node.position(t), camera.node("01WantedState").position(t))
                          for t in times], label="way from state 01 [0.1 units]")
        axes.set(xlabel="time [s]", ylim=(-3, 68), title="From a wide lens to a long one, and back")
        axes.legend(loc="upper right")


def plot_directinputlink(rigstage, axes):
    """The same hand through three of the shipped profiles."""
    seconds = 6.0
    for profile in ("Very Quick", "Smooth", "Integrating Increase"):
        with new_stage(rigstage, seconds) as stage:
            link = stage.create("DirectInputLink")
            link.load_profile(profile)
            pad = bind_axes(stage, link, "Right/Left Transl")
            hand = lambda t: held(t, 0.5, 2.0) - held(t, 3.0, 3.8)
            stage.record(seconds, before_frame=lambda t: pad.set("Axis", 0, hand(t)))
            node = link.node("ActuatorMesh")
            times = frame_times(stage, seconds)
            axes.plot(times, [node.position(t)[0] for t in times], label=profile)
    axes.plot(times, [hand(t) for t in times], color="0.8", drawstyle="steps-post", label="stick",
              zorder=0)
    axes.set(xlabel="time [s]", ylabel="x of the actuator [units]", title="One stick, three profiles")
    axes.legend()


def plot_1dpositioner(rigstage, axes):
    """Taps that hold, behind a limit of the rate of change."""
    seconds = 8.0
    with new_stage(rigstage, seconds) as stage:
        positioner = stage.create("1DPositioner")
        positioner.set("Forw/Backw Transl Keep Trinary State", True)
        positioner.set("Forw/Backw Transl Change Limit", 0.8)
        positioner.set("Forw/Backw Transl Maximum", 3.0)
        pad = bind_axes(stage, positioner, "Forw/Backw Transl")
        hand = lambda t: held(t, 0.5, 0.7) + held(t, 4.0, 4.2)
        stage.record(seconds, before_frame=lambda t: pad.set("Axis", 0, hand(t)))
        node = positioner.node("ActuatorMesh")
        times = frame_times(stage, seconds)
        axes.plot(times, [-node.position(t)[2] for t in times], label="way forward")
        axes.plot(times, [hand(t) for t in times], color="C1", drawstyle="steps-post", label="key")
        axes.axhline(3.0, color="0.8", zorder=0, label="Maximum")
        axes.set(xlabel="time [s]", ylabel="-z [units]",
                 title="A tap sends it to its stop, the next one back")
        axes.legend()


def plot_1drotator(rigstage, axes):
    """As a motor: the input is a speed."""
    seconds = 8.0
    with new_stage(rigstage, seconds) as stage:
        rotator = stage.create("1DRotator")
        rotator.set("Roll (Right/Left) Integrate", True)
        pad = bind_axes(stage, rotator, "Roll (Right/Left)")
        hand = lambda t: held(t, 0.5, 6.0) * min(1.0, 0.5 * (t - 0.5))
        stage.record(seconds, before_frame=lambda t: pad.set("Axis", 0, hand(t)))
        node = rotator.node("ActuatorMesh")
        times = frame_times(stage, seconds)
        turned, last = [], 0.0
        for t in times:
            m = node.matrix(t)
            angle = -math.degrees(math.atan2(m[1], m[0]))
            last += (angle - last + 180.0) % 360.0 - 180.0
            turned.append(last)
        axes.plot(times, turned, label="roll to the right")
        axes.plot(times, [100 * hand(t) for t in times], color="0.8", label="stick [%]", zorder=0)
        axes.set(xlabel="time [s]", ylabel="[degrees]", title="\"Integrate\": the stick sets the speed")
        axes.legend()


def plot_activescaler(rigstage, axes):
    """A flame that flares up and dies down to its minimum."""
    seconds = 6.0
    with new_stage(rigstage, seconds) as stage:
        scaler = stage.create("ActiveScaler")
        scaler.set("Forw/Backw Scale Maximum", 4.0)
        scaler.set("Forw/Backw Scale Minimum", 0.5)
        pad = bind_axes(stage, scaler, "Forw/Backw Scale")
        hand = lambda t: held(t, 1.0, 3.5) * (0.8 + 0.2 * math.sin(9.0 * t))
        stage.record(seconds, before_frame=lambda t: pad.set("Axis", 0, hand(t)))
        node = scaler.node("ActuatorMesh")
        times = frame_times(stage, seconds)
        axes.plot(times, [column_length(node.matrix(t), 2) for t in times], label="length")
        axes.plot(times, [hand(t) for t in times], color="0.8", label="stick", zorder=0)
        axes.axhline(0.5, color="C1", linestyle=":", label="Minimum")
        axes.set(xlabel="time [s]", ylabel="scale along Z", title="Never below its minimum")
        axes.legend()


def plot_rectangularplay(rigstage, axes):
    """A slider knocks about between the walls of a carrier that shakes."""
    seconds = 6.0
    carrier = lambda t: 1.2 * math.sin(2.2 * t) if t < 4.0 else 1.2 * math.sin(8.8)
    with new_stage(rigstage, seconds) as stage:
        play = stage.create("RectangularPlay")
        times = frame_times(stage, seconds)
        key(play.node("RectanglePlay"), times, lambda t: place(carrier(t), scale=(0.4, 1, 1)))
        for rebounce in (False, True):
            stage.time = 0.0
            play.set("Allow Slight Rebounce", rebounce)
            stage.record(seconds)
            node = play.node("InnerSlider")
            axes.plot(times, [node.position(t)[0] for t in times],
                      label="slider, with rebounce" if rebounce else "slider")
        walls = [[carrier(t) + side for t in times] for side in (-0.4, 0.4)]
        axes.fill_between(times, *walls, color="0.9", zorder=0, label="between the walls")
        axes.set(xlabel="time [s]", ylabel="x [units]", title="Knocked about in a box")
        axes.legend()


def plot_sphericalplay(rigstage, axes):
    """The slider of a carrier that circles: its way in the carrier's frame."""
    seconds = 8.0
    carrier = lambda t: (2 * math.cos(1.5 * t), 2 * math.sin(1.5 * t)) if t < 5.0 else carrier(5.0 - 1e-9)
    with new_stage(rigstage, seconds) as stage:
        play = stage.create("SphericalPlay")
        play.set("Play Friction", 0.02)
        times = frame_times(stage, seconds)
        key(play.node("SphericPlay"), times,
            lambda t: place(*carrier(t), scale=(0.5, 0.5, 0.5)))
        play.node("InnerSlider").set_matrix(place(*carrier(0.0), scale=(0.5, 0.5, 0.5)))
        stage.record(seconds)
        way = [(x - carrier(t)[0], y - carrier(t)[1])
               for t in times for x, y, _ in [play.node("InnerSlider").position(t)]]
        stop = round(5.0 / stage.frame_duration)
        for part, label in ((way[:stop + 1], "while the carrier circles"), (way[stop:], "from its stop on")):
            axes.plot([x for x, _ in part], [y for _, y in part], marker=".", markersize=3, label=label)
        axes.legend(loc=(0.18, 0.64))
        turn = [2 * math.pi * i / 100 for i in range(101)]
        axes.plot([0.5 * math.cos(a) for a in turn], [0.5 * math.sin(a) for a in turn], color="0.7")
        axes.set_aspect("equal")
        axes.set(xlabel="x in the carrier [units]", ylabel="y [units]",
                 title="Pressed against a sphere, then let go")


def plot_angularplay(rigstage, axes):
    """A clapper hangs behind the bell until the cone takes it along."""
    seconds = 8.0
    heading = lambda t: 75.0 * math.sin(1.2 * t)
    with new_stage(rigstage, seconds) as stage:
        play = stage.create("AngularPlay")
        play.press("Initialize")
        times = frame_times(stage, seconds)
        key(play.node("AngularPlay"), times, lambda t: place(yaw=math.radians(heading(t))))
        stage.record(seconds)
        node = play.node("InnerSlider")
        angles = [math.degrees(math.atan2(*[node.matrix(t)[i] for i in (8, 10)])) for t in times]
        axes.plot(times, angles, label="slider")
        outer = [heading(t) for t in times]
        axes.fill_between(times, [a - 45 for a in outer], [a + 45 for a in outer], color="0.9",
                          zorder=0, label="within the cone")
        axes.set(xlabel="time [s]", ylabel="heading [degrees]", title="Taken along by a cone's wall")
        axes.legend()


def plot_distanceruler(rigstage, axes):
    """A distance opens a scaler."""
    seconds = 8.0
    apart = lambda t: 2.0 + 2.5 * math.sin(t)
    with new_stage(rigstage, seconds) as stage:
        ruler = stage.create("DistanceRuler")
        scaler = stage.create("ActiveScaler")
        ruler.set("Min Distance", 1.0)
        source = next(d for d in stage.devices if d.name == ruler.name)
        channel = scaler.input("Up/Down Scale")
        channel.bind(source, "Distance from Min/Max", 3)
        channel.deadzone, channel.multiplier = 0.0, 1.0
        scaler.set("Up/Down Scale Maximum", 3.0)
        times = frame_times(stage, seconds)
        key(ruler.node("Node2"), times, lambda t: place(z=apart(t)))
        stage.record(seconds)
        node = scaler.node("ActuatorMesh")
        axes.plot(times, [abs(apart(t)) for t in times], label="distance")
        axes.plot(times, [column_length(node.matrix(t), 1) for t in times],
                  label="height of the scaler")
        for limit in (1.0, 4.0):
            axes.axhline(limit, color="0.8", zorder=0)
        axes.set(xlabel="time [s]", ylabel="[units]", title="A scaler opens between two distances")
        axes.legend()


def measured(stage, ruler, seconds, names):
    """Times, and the outputs of a ruler in the frames at them."""
    times = []
    lines = {name: [] for name in names}

    def note(t):
        times.append(t)
        for name in names:
            lines[name].append(ruler.outputs[name])

    stage.record(seconds, before_frame=note)
    return times[:-1], {name: line[1:] for name, line in lines.items()}  # read a frame later


def plot_angleruler(rigstage, axes):
    """The angle of a hinge, its speed, and the trigger of its end stop."""
    seconds = 6.0
    with new_stage(rigstage, seconds) as stage:
        ruler = stage.create("AngleRuler")
        ruler.set("Max Angle", 2.4)
        times = frame_times(stage, seconds)

        def arm(t):
            angle = 1.5 + 1.2 * math.sin(1.6 * t)
            return place(math.sin(angle), 0.0, -math.cos(angle))

        key(ruler.node("Node2"), times, arm)
        names = ("Angle value", "Angular Velocity", "Maximum Trigger Value")
        times, lines = measured(stage, ruler, seconds, names)
        for name in names:
            axes.plot(times, lines[name], label=name)
        axes.axhline(2.4, color="0.8", zorder=0)
        axes.set(xlabel="time [s]", ylabel="[rad], [rad/s]", title="A hinge that swings past 2.4 rad",
                 ylim=(-0.1, 3.9))
        axes.legend(loc="upper center")


def plot_scaleruler(rigstage, axes):
    """How far a node has grown, axis by axis."""
    seconds = 6.0
    with new_stage(rigstage, seconds) as stage:
        ruler = stage.create("ScaleRuler")
        ruler.node("ReferenceNode").set_matrix(place(scale=(1, 0.5, 1)))
        ruler.set("Max Y Scale", 3.0)
        times = frame_times(stage, seconds)
        key(ruler.node("ScalingNode"), times, lambda t: place(scale=(1.0, 1.0 + 0.6 * math.sin(t), 1.0)))
        names = ("X Scale Value", "Y Scale Value", "Percentage from Y Min/Max")
        times, lines = measured(stage, ruler, seconds, names)
        for name in names:
            axes.plot(times, lines[name], label=name)
        axes.set(xlabel="time [s]", ylabel="scale by the reference's",
                 title="Against a reference of half the height")
        axes.legend()


def plot_sinusoid(rigstage, axes):
    """A hand turns the amplitude up."""
    seconds = 8.0
    with new_stage(rigstage, seconds) as stage:
        sinusoid = stage.create("Sinusoid")
        sinusoid.set("Angular Frequency", 3.0)
        pad = bind_axes(stage, sinusoid, "Spinner: Amplitude")
        hand = lambda t: 0.1 * held(t, 2.0, 3.0)
        stage.record(seconds, before_frame=lambda t: pad.set("Axis", 0, hand(t)))
        node = sinusoid.node("SinusNode")
        times = frame_times(stage, seconds)
        axes.plot(times, [node.position(t)[1] for t in times], label="SinusNode")
        axes.axvspan(2.0, 3.0, color="0.9", zorder=0, label="a hand on the amplitude")
        axes.set(xlabel="time [s]", ylabel="y [units]", title="3 rad/s, and a larger swing from 2 s on")
        axes.legend(loc="lower left")


def hilly(x, z):
    return 0.6 * math.sin(1.3 * x) + 0.25 * math.cos(2.7 * x + z)


def add_terrain(stage, cells=60, size=12.0):
    """A mesh of hills round the origin."""
    points, faces = [], []
    for i in range(cells + 1):
        for j in range(cells + 1):
            x, z = size * (i / cells - 0.5), size * (j / cells - 0.5)
            points.append((x, hilly(x, z), z))
    for i in range(cells):
        for j in range(cells):
            a, b = i * (cells + 1) + j, (i + 1) * (cells + 1) + j
            faces += [(a, a + 1, b), (b, a + 1, b + 1)]
    return stage.add_mesh("Terrain", points, faces)


def plot_raycaster(rigstage, axes):
    """The hit sweeps over hills and leans with them."""
    seconds = 4.0
    with new_stage(rigstage, seconds) as stage:
        caster = stage.create("RayCaster")
        caster.node("HitSurfaceChild").parent = add_terrain(stage)
        times = frame_times(stage, seconds)
        down = lambda x, y: (1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, x, y, 0, 1)
        key(caster.node("RayOrigin"), times, lambda t: down(-4.0 + 2.0 * t, 3.0))
        stage.record(seconds)
        node = caster.node("RayHit")
        hits = [node.position(t) for t in times]
        xs = [-4.5 + 0.05 * i for i in range(181)]
        axes.plot(xs, [hilly(x, 0.0) for x in xs], color="0.7", label="hills")
        axes.plot([h[0] for h in hits], [h[1] for h in hits], ".", markersize=3, label="RayHit")
        for t in times[::6]:
            m, (x, y, _) = node.matrix(t), node.position(t)
            axes.arrow(x, y, 0.5 * m[8], 0.5 * m[9], color="C1", head_width=0.06)
        axes.set_aspect("equal")
        axes.set(xlabel="x [units]", ylabel="y [units]", title="A ray from above, and the normals")
        axes.legend()
