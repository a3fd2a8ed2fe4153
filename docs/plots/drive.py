"""A car driven by a scripted pad, and what it did, frame by frame."""

import math
import tempfile
from dataclasses import dataclass, field

CAR = "4WheelerExt"
AXES = ["Gas Pedal (Forw/Backw)", "Steering Wheel (Right/Left)", "Booster", "ABS Brake", "Skidding",
        "Skid Brake", "Gravel Shake Amplitude", "Burnout", "External Force"]
WHEELS = ["FL", "FR", "BL", "BR"]
FPS = 25.0


@dataclass
class Motion:
    """One value per frame: positions [m], speed [m/s], angles [rad], wheel heights over the plane [m]."""
    time: list = field(default_factory=list)
    position: list = field(default_factory=list)
    speed: list = field(default_factory=list)
    steering: list = field(default_factory=list)
    pitch: list = field(default_factory=list)
    roll: list = field(default_factory=list)
    heading: list = field(default_factory=list)
    wheels: dict = field(default_factory=lambda: {w: [] for w in WHEELS})
    wheel_points: dict = field(default_factory=lambda: {w: [] for w in WHEELS})


def axis(matrix, column):
    x, y, z = matrix[4 * column:4 * column + 3]
    length = math.sqrt(x * x + y * y + z * z)
    return x / length, y / length, z / length


def read(stage, car, seconds):
    """The keys of a take as a Motion. Steering is that of the front left wheel against the body."""
    motion = Motion()
    body = car.node("CarBodyMesh")
    wheels = {w: car.node("WheelMesh_" + w) for w in WHEELS}
    centre = car.node("WheelCenterMesh_FL")
    step = stage.frame_duration
    for frame in range(round(seconds / step) + 1):
        t = frame * step
        matrix = body.matrix(t)
        motion.time.append(t)
        motion.position.append(matrix[12:15])
        side, back = axis(matrix, 0), axis(matrix, 2)
        motion.pitch.append(math.asin(-back[1]))
        motion.roll.append(math.asin(side[1]))
        motion.heading.append(math.atan2(-back[0], back[2]))
        turned = axis(centre.local_matrix(t), 2)
        motion.steering.append(math.atan2(-turned[0], turned[2]))
        for w in WHEELS:
            point = wheels[w].position(t)
            motion.wheels[w].append(point[1])
            motion.wheel_points[w].append(point)
    for i, here in enumerate(motion.position):
        before = motion.position[max(0, i - 1)]
        motion.speed.append(math.dist(here, before) / step if i else 0.0)
    return motion


class Drive:
    """A stage with a car on a ground, and a pad. Use as a context."""

    def __init__(self, rigstage, ground=None, seconds=10.0, fps=FPS, **items):
        self.rigstage, self.ground, self.seconds, self.fps, self.items = rigstage, ground, seconds, fps, items

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        self.stage = self.rigstage.Stage(fps=self.fps, end=self.seconds, user_folder=self.folder.name)
        self.car = self.stage.create(CAR, name="Car")
        if self.ground:
            mesh = self.stage.add_mesh("Ground", *self.ground)
            self.car.node("GravityDirectionMesh").parent = mesh
        self.pad = self.stage.add_device("Pad", axes=len(AXES))
        for index, name in enumerate(AXES):
            self.car.input(name).bind(self.pad, "Axis", index)
        for label, value in self.items.items():
            self.car.set(label, value)
        return self

    def __exit__(self, *_):
        self.stage.close()
        self.folder.cleanup()

    def hold(self, **raw):
        values = {"gas": 0, "steering": 1, "booster": 2, "brake": 3, "skid": 4, "skid_brake": 5,
                  "gravel": 6, "burnout": 7, "force": 8}
        for name, index in values.items():
            self.pad.set("Axis", index, raw.get(name, 0.0))

    def take(self, hands):
        """Records with the pad as `hands(t)` (a dict) says, and answers the motion."""
        self.hold(**hands(0.0))
        self.stage.record(self.seconds, before_frame=lambda t: self.hold(**hands(t)))
        return read(self.stage, self.car, self.seconds)

    def again(self, **items):
        """The same performance with other items."""
        for label, value in items.items():
            self.car.set(label, value)
        self.stage.resimulate()
        return read(self.stage, self.car, self.seconds)
