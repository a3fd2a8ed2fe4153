"""Another program reads an exported take: runs where Blender and python3-numpy are installed."""

import json
import math
import os
import shutil
import subprocess
import unittest

from stage_test import StageCase

FPS = 25
FRAMES = 50

# Blender's glTF importer names numpy.bool, which numpy 1.24 no longer has.
READER = """
import json, sys
import numpy
numpy.bool = bool
import bpy
path, node, out, fps, frames = sys.argv[sys.argv.index("--") + 1:]
bpy.ops.wm.read_factory_settings(use_empty=True)
scene = bpy.context.scene
scene.render.fps = int(fps)
bpy.ops.import_scene.gltf(filepath=path)
positions = []
for frame in range(int(frames) + 1):
    scene.frame_set(frame)
    x, y, z = bpy.data.objects[node].matrix_world.translation
    positions.append((x, z, -y))  # Blender's up is +Z
with open(out, "w") as file:
    json.dump(positions, file)
"""


@unittest.skipUnless(shutil.which("blender"), "Blender is not installed")
class Blender(StageCase):
    def test_positions_at_every_frame(self):
        tool = self.stage.create("Sinusoid")
        tool.set("Angular Frequency", 5.0)
        tool.node("Reference Node").set_matrix((1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, -2, 7, 1))
        self.stage.record(FRAMES / FPS)
        node = tool.node("SinusNode")
        self.stage.export(self.path("take.glb"))
        with open(self.path("read.py"), "w", encoding="utf-8") as script:
            script.write(READER)
        run = subprocess.run(
            ["blender", "-b", "--factory-startup", "--python-exit-code", "1", "--python",
             self.path("read.py"), "--", self.path("take.glb"), node.name, self.path("out.json"),
             str(FPS), str(FRAMES)],
            capture_output=True, text=True, env={**os.environ, "LD_PRELOAD": ""}, check=False)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        with open(self.path("out.json"), encoding="utf-8") as read:
            positions = json.load(read)
        for frame, position in enumerate(positions):
            self.assertLess(math.dist(position, node.position(frame / FPS)), 1e-5, f"frame {frame}")


if __name__ == "__main__":
    unittest.main()
