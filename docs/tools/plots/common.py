"""What the pictures of all tools share."""

import contextlib
import tempfile

FPS = 25.0


@contextlib.contextmanager
def new_stage(rigstage, end, fps=FPS):
    """A stage whose profiles live in a folder that goes with it."""
    with tempfile.TemporaryDirectory() as profiles, \
            rigstage.Stage(fps=fps, end=end, user_folder=profiles) as stage:
        yield stage


def frame_times(stage, seconds):
    return [i * stage.frame_duration for i in range(round(seconds / stage.frame_duration) + 1)]


def held(t, begin, end):
    """A key that is down from begin to end [s]."""
    return 1.0 if begin <= t < end else 0.0
