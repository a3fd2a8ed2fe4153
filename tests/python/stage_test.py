"""The scene, time, undo and errors as a script sees them."""

import logging
import math
import os
import resource
import tempfile
import unittest

import rigstage

IDENTITY = (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)
TETRAHEDRON = ([(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)],
               [(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)])


def translated(x, y, z):
    return IDENTITY[:12] + (x, y, z, 1)


class StageCase(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.stage = rigstage.Stage(user_folder=self.folder.name)
        self.addCleanup(self.stage.close)

    def path(self, name):
        return os.path.join(self.folder.name, name)


class Scene(StageCase):
    def test_a_second_stage_waits_for_the_end_of_the_first(self):
        with self.assertRaises(RuntimeError):
            rigstage.Stage()
        self.stage.close()
        with rigstage.Stage(fps=30, start=1, end=2, user_folder=self.folder.name) as other:
            self.assertEqual((other.fps, other.range, other.time), (30, (1, 2), 1))
            self.assertAlmostEqual(other.frame_duration, 1 / 30)
        with self.assertRaises(RuntimeError):
            other.time  # pylint: disable=pointless-statement

    def test_nodes(self):
        top = self.stage.add_empty("Top", translated(1, 2, 3))
        mesh = self.stage.add_mesh("Mesh", *TETRAHEDRON)
        camera = self.stage.add_camera("Camera", fov=60)
        spline = self.stage.add_spline("Spline", [(0, 0, 0), (1, 0, 0), (1, 1, 0)])
        self.assertEqual([node.kind for node in (top, mesh, camera, spline)],
                         ["helper", "mesh", "camera", "spline"])
        mesh.parent = top
        self.assertEqual(mesh.parent, top)
        self.assertEqual(mesh.position(), (0, 0, 0))
        self.assertEqual(mesh.local_matrix()[12:15], (-1, -2, -3))
        self.assertEqual(self.stage.nodes, [top, mesh, camera, spline])
        self.assertAlmostEqual(camera.fov(), 60)
        self.assertEqual(self.stage.add_empty("Top").name, self.stage.nodes[-1].name)
        self.assertNotEqual(self.stage.nodes[-1].name, "Top")
        with self.assertRaises(ValueError):
            top.parent = mesh
        with self.assertRaises(ValueError):
            mesh.fov()
        self.stage.remove(mesh)
        self.assertTrue(mesh.deleted)
        with self.assertRaises(KeyError):
            self.stage.find("Mesh")

    def test_what_was_removed_stays_so_when_its_making_is_undone(self):
        tool = self.stage.create("Sinusoid")
        self.stage.remove(tool.node("SinusNode"))
        while self.stage.undo():
            pass
        self.assertEqual(self.stage.nodes, [])

    def test_keys(self):
        node = self.stage.add_empty("Node")
        node.set_matrix(translated(0, 0, 0), 0.0, key=True)
        node.set_matrix(translated(10, 0, 0), 1.0, key=True)
        self.assertEqual(node.key_times(), [0.0, 1.0])
        self.assertAlmostEqual(node.position(0.5)[0], 5)
        self.assertEqual(node.position(2.0), (10, 0, 0))

    def test_rays(self):
        mesh = self.stage.add_mesh("Mesh", *TETRAHEDRON)
        distance, normal = mesh.ray_cast((0.2, 0.2, -5), (0, 0, 1))
        self.assertAlmostEqual(distance, 5)
        self.assertAlmostEqual(abs(normal[2]), 1)
        self.assertIsNone(mesh.ray_cast((5, 5, -5), (0, 0, 1)))

    def test_bad_values_change_nothing(self):
        node = self.stage.add_empty("Node")
        bad = (math.nan,) * 16
        for call in (lambda: node.set_matrix(bad), lambda: node.position(math.inf),
                     lambda: self.stage.add_mesh("Bad", [(0, 0, 0)], [(0, 1, 2)]),
                     lambda: self.stage.add_mesh("Bad", [(0, 0, math.nan)], []),
                     lambda: self.stage.add_camera("Bad", fov=180),
                     lambda: self.stage.add_spline("Bad", [(0, 0, 0)]),
                     lambda: setattr(self.stage, "time", math.nan),
                     lambda: setattr(self.stage, "range", (1, 0)),
                     lambda: setattr(self.stage, "fps", 0)):
            with self.assertRaises(ValueError):
                call()
        self.assertEqual(self.stage.nodes, [node])
        self.assertEqual(node.matrix(), IDENTITY)

    def test_nodes_of_a_closed_scene_say_so(self):
        node = self.stage.add_empty("Node")
        self.stage.new()
        self.assertEqual(self.stage.nodes, [])
        self.assertTrue(node.deleted)
        with self.assertRaises(RuntimeError):
            node.name  # pylint: disable=pointless-statement

    def test_settings(self):
        self.stage.settings["startcountdown"] = 5
        self.assertEqual(self.stage.settings["startcountdown"], 5)
        with self.assertRaises(KeyError):
            self.stage.settings["nothing"]  # pylint: disable=pointless-statement
        with self.assertRaises(ValueError):
            self.stage.settings["startcountdown"] = "five"
        self.stage.close()
        with rigstage.Stage(user_folder=self.folder.name) as again:
            self.assertEqual(dict(again.settings)["startcountdown"], 5)


class Files(StageCase):
    def test_what_was_saved_opens_to_the_same_bytes(self):
        tool = self.stage.create("Sinusoid")
        self.stage.record(2.0)
        keys = [tool.node("SinusNode").matrix(t) for t in tool.node("SinusNode").key_times()]
        self.stage.save(self.path("a.glb"))
        self.stage.new()
        self.stage.open(self.path("a.glb"))
        self.stage.save(self.path("b.glb"))
        with open(self.path("a.glb"), "rb") as a, open(self.path("b.glb"), "rb") as b:
            self.assertEqual(a.read(), b.read())
        node = self.stage.tool("Sinusoid_01").node("SinusNode")
        self.assertEqual([node.matrix(t) for t in node.key_times()], keys)

    def test_a_file_that_is_none_leaves_the_scene(self):
        tool = self.stage.create("Sinusoid")
        with open(self.path("bad.glb"), "wb") as out:
            out.write(b"glTF and nothing else")
        self.stage.save(self.path("whole.glb"))
        with open(self.path("whole.glb"), "rb") as whole, open(self.path("cut.glb"), "wb") as cut:
            cut.write(whole.read()[:-100])
        for name, error in (("bad.glb", ValueError), ("cut.glb", ValueError), ("none.glb", OSError)):
            with self.assertRaisesRegex(error, name):
                self.stage.open(self.path(name))
        with self.assertRaises(OSError):
            self.stage.save(self.path("no/such/folder.glb"))
        self.assertEqual(tool.name, "Sinusoid_01")

    def test_a_disk_that_is_full_leaves_the_old_file(self):
        self.stage.create("Sinusoid")
        path = self.path("scene.glb")
        self.stage.save(path)
        with open(path, "rb") as file:
            before = file.read()
        self.stage.record(2.0)
        limits = resource.getrlimit(resource.RLIMIT_FSIZE)
        resource.setrlimit(resource.RLIMIT_FSIZE, (4096, limits[1]))
        try:
            with self.assertRaisesRegex(OSError, "scene.glb"):
                self.stage.save(path)
        finally:
            resource.setrlimit(resource.RLIMIT_FSIZE, limits)
        with open(path, "rb") as file:
            self.assertEqual(file.read(), before)
        self.assertEqual([name for name in os.listdir(self.folder.name) if "scene" in name], ["scene.glb"])
        self.stage.save(path)

    def test_prm(self):
        self.stage.create("Sinusoid").set("Amplitude", 3.0)
        self.stage.save_prm(self.path("rig.prm"))
        self.stage.load_prm(self.path("rig.prm"))
        self.assertEqual([tool.name for tool in self.stage.tools], ["Sinusoid_01", "Sinusoid_02"])
        self.assertEqual(self.stage.tool("Sinusoid_02").get("Amplitude"), 3.0)
        with self.assertRaises(OSError):
            self.stage.load_prm(self.path("none.prm"))


if __name__ == "__main__":
    logging.disable(logging.CRITICAL)
    unittest.main()
