"""Drives the program from end to end: no window, no display, no home."""

import json
import math
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["RIGSTAGE"]


class CliTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="rigstage-cli-"))
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "home").mkdir()

    def run_program(self, *arguments):
        environment = {"PATH": "/usr/bin:/bin", "HOME": str(self.folder / "home"),
                       "LSAN_OPTIONS": os.environ.get("LSAN_OPTIONS", "")}
        return subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder, env=environment,
                              capture_output=True, text=True, timeout=120)

    def ok(self, *arguments):
        done = self.run_program(*arguments)
        self.assertEqual(done.returncode, 0, f"{arguments}: {done.stderr}")
        return done.stdout

    def json(self, *arguments):
        return json.loads(self.ok(*arguments, "--json"))

    def refused(self, status, words, *arguments):
        """One line of error, with these words in it, and nothing on stdout."""
        done = self.run_program(*arguments)
        self.assertEqual(done.returncode, status, f"{arguments}: {done.stdout}{done.stderr}")
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertTrue(done.stderr.startswith("rigstage: "), done.stderr)
        for word in words:
            self.assertIn(word, done.stderr)
        return done

    def scene(self, name="Wave"):
        self.ok("new", "--fps", 25, "--end", 4, "-o", "empty.glb")
        self.ok("add", "empty.glb", "--type", "Sinusoid", "--name", name, "-o", "scene.glb")
        return "scene.glb"

    def take(self, name="Wave"):
        self.ok("record", self.scene(name), "--seconds", 2, "--set", f"{name}/Amplitude=2", "-o", "take.glb")
        return "take.glb"

    def test_a_car_drives_on_an_imported_terrain(self):
        self.ok("new", "--end", 4, "-o", "scene.glb")
        self.ok("add", "scene.glb", "--type", "4WheelerExt", "--name", "Car", "-o", "scene.glb")
        (self.folder / "hill.obj").write_text(
            "o hill\nv -9 0 9\nv 9 0 9\nv 9 6 -60\nv -9 6 -60\nf 1 2 3 4\n")
        name = self.ok("import", "scene.glb", "hill.obj", "-o", "scene.glb").splitlines()[0]
        self.refused(1, ["Nothing"], "link", "scene.glb", "--node", "Nothing", "--to", name, "-o", "no.glb")
        self.refused(1, ["Car", "Hub"], "link", "scene.glb", "--node", "Car/Hub", "--to", name, "-o", "no.glb")
        self.ok("link", "scene.glb", "--node", "Car/GravityDirectionMesh", "--to", name, "-o", "scene.glb")
        (self.folder / "drive.csv").write_text("time,Gas Pedal (Forw/Backw)\n0,1\n")
        self.ok("record", "scene.glb", "--tool", "Car", "--drive", "drive.csv", "--seconds", 4, "-o", "take.glb")
        self.ok("verify", "take.glb")
        swept = json.loads(self.ok("sweep", "take.glb", "--set", "Car/Front Stiffness=500:2000:1500", "-o",
                                   "runs", "--json"))
        softer, same = (run["difference"]["Car_CarBodyMesh"] for run in swept["runs"])
        self.assertEqual(same, 0.0)
        self.assertGreater(softer, 0.01)

    def test_a_new_scene_tells_what_it_holds(self):
        info = self.json("info", self.scene())
        self.assertEqual((info["fps"], info["range"], info["take"]), (25.0, [0.0, 4.0], None))
        self.assertEqual([(t["name"], t["type"], t["checked"]) for t in info["tools"]],
                         [("Wave", "Sinusoid", True)])
        self.assertIn("Spinner: Amplitude", info["tools"][0]["inputs"])
        amplitude = [i for i in info["tools"][0]["items"] if i["label"] == "Amplitude"]
        self.assertEqual(amplitude, [{"group": "Sinus Values", "label": "Amplitude", "kind": "spinner",
                                      "value": 1.0}])
        self.assertEqual({n["name"]: n["owner"] for n in info["nodes"]},
                         {"Wave_Reference Node": "Wave", "Wave_SinusNode": "Wave"})
        self.assertIn("Wave (Sinusoid)", self.ok("info", "scene.glb"))
        self.assertIn("Sinusoid", [t["id"] for t in self.json("tools")])

    def test_a_table_drives_a_take_that_verifies(self):
        scene = self.scene()
        table = self.folder / "drive.csv"
        # The live spinner rises by the input's value each frame: from 1 by 0.1 in the frames from 0.4 s on.
        table.write_text("time,Spinner: Amplitude\n0.4,0.19\n0.8,0\n")
        report = self.json("record", scene, "--drive", table, "--tool", "Wave", "--seconds", 2, "-o", "a.glb")
        self.assertEqual((report["start"], report["end"]), (0.0, 2.0))
        info = self.json("info", "a.glb")
        keys = [n["keys"] for n in info["nodes"] if n["name"] == "Wave_SinusNode"][0]
        self.assertEqual((keys["pose"], keys["first"], keys["last"]), (51, 0.0, 2.0))
        # 0.19 behind a dead zone of 0.1 is (0.19 - 0.1) / (1 - 0.1) = 0.1; ten frames from 0.4 to 0.76.
        amplitude = [i["value"] for i in info["tools"][0]["items"] if i["label"] == "Amplitude"][0]
        self.assertTrue(math.isclose(amplitude, 2.0, abs_tol=1e-9), amplitude)
        self.assertTrue(self.json("verify", "a.glb")["identical"])
        # The same with the tool in the column's name, from another start.
        table.write_text("time,Wave/Spinner: Amplitude\n0.4,0.19\n")
        self.assertEqual(self.json("record", scene, "--drive", table, "--seconds", 1, "--start", 1,
                                   "-o", "b.glb")["start"], 1.0)
        self.assertEqual(self.ok("record", scene, "--seconds", 1, "-o", "c.glb"), "")
        again = (self.folder / "c.glb").read_bytes()
        self.ok("record", scene, "--seconds", 1, "-o", "c.glb")
        self.assertEqual((self.folder / "c.glb").read_bytes(), again, "the same command, other bytes")

    def test_a_take_of_a_tool_without_inputs_has_a_range(self):
        self.ok("new", "--fps", 25, "--end", 4, "-o", "empty.glb")
        for tool in ("LookAtCam", "Gyro", "AngularPlay", "RayCaster"):
            with self.subTest(tool):
                self.ok("add", "empty.glb", "--type", tool, "-o", "scene.glb")
                self.refused(1, ["no take"], "verify", "scene.glb")
                self.ok("record", "scene.glb", "--seconds", 1, "--start", 1, "-o", "take.glb")
                self.assertEqual(self.json("info", "take.glb")["take"], {"start": 1.0, "end": 2.0})
                self.assertTrue(self.json("verify", "take.glb")["identical"])
                self.ok("resimulate", "take.glb", "-o", "again.glb")

    def test_resimulating_with_another_item_changes_the_take(self):
        take = self.take("Wave/1")  # a name with a slash
        self.ok("resimulate", take, "--set", "Wave/1/Sinus Values/Amplitude=3", "-o", "other.glb")
        self.assertTrue(self.json("verify", "other.glb")["identical"])
        self.assertNotEqual((self.folder / take).read_bytes(), (self.folder / "other.glb").read_bytes())
        done = self.run_program("resimulate", take, "--set", "Wave/1/Amplitude=500", "-o", "other.glb")
        self.assertIn("held to 100", done.stderr)

    def test_verify_names_what_differs(self):
        self.take()
        # The same take with another amplitude in the tool than the one that it was made with.
        self.ok("resimulate", "take.glb", "--from", 1, "--to", 2, "--set", "Wave/Amplitude=50", "-o", "bad.glb")
        done = self.run_program("verify", "bad.glb", "--json")
        self.assertEqual(done.returncode, 1)
        difference = json.loads(done.stdout)["difference"]
        self.assertEqual((difference["node"], difference["value"]), ("Wave_SinusNode", "position y"))
        self.assertLessEqual(difference["frame"], 26)
        self.refused(1, ["Wave_SinusNode", "position y", f"frame {difference['frame']}"], "verify", "bad.glb")

    def test_a_sweep_writes_one_scene_for_each_combination(self):
        take = self.take()
        result = self.json("sweep", take, "--set", "Wave/Amplitude=2:4:1", "--set",
                           "Wave/Absolute Values=true", "-o", "runs", "--jobs", 2)
        self.assertEqual([r["settings"]["Wave/Amplitude"] for r in result["runs"]], ["2", "3", "4"])
        files = sorted(p.name for p in (self.folder / "runs").iterdir())
        self.assertEqual(files, ["take-0001.glb", "take-0002.glb", "take-0003.glb"])
        for name in files:
            self.assertTrue(self.json("verify", f"runs/{name}")["identical"], name)
        table = self.ok("sweep", take, "--set", "Wave/Amplitude=2:4:1", "-o", "runs", "--jobs", 3).splitlines()
        self.assertEqual(table[0].split("\t"), ["file", "Wave/Amplitude", "Wave_SinusNode [m]"])
        distances = [float(line.split("\t")[2]) for line in table[1:]]
        self.assertEqual(distances[0], 0.0)  # the take's own amplitude
        self.assertTrue(0.0 < distances[1] < distances[2], distances)

    def test_an_export_has_no_data_of_ours(self):
        self.ok("export", self.take(), "-o", "out.glb", "--tolerance", 0.01)
        content = (self.folder / "out.glb").read_bytes()
        self.assertTrue(content.startswith(b"glTF"))
        self.assertNotIn(b"recordedinputvalues", content)
        self.assertLess(len(content), (self.folder / "take.glb").stat().st_size)

    def test_a_killed_take_is_recovered(self):
        script = self.folder / "perform.py"
        module = pathlib.Path(PROGRAM).parent / "python"
        if not any(module.glob("rigstage*.so")):
            self.skipTest("the Python module is not built")
        script.write_text(
            "import os, signal, time, sys\n"
            f"sys.path.insert(0, {str(module)!r})\n"
            "import rigstage\n"
            "def frame(t):\n"
            "    if abs(t - 2.0) < 0.001: time.sleep(0.6)\n"
            "    if t > 3.0: os.kill(os.getpid(), signal.SIGKILL)\n"
            "with rigstage.Stage(user_folder='user') as stage:\n"
            "    stage.create('Sinusoid', 'Wave')\n"
            "    stage.record(5, before_frame=frame)\n")
        done = subprocess.run(["/usr/bin/python3", str(script)], cwd=self.folder, timeout=120)
        self.assertEqual(done.returncode, -signal.SIGKILL)
        lost = self.json("recover", "--user", "user")
        self.assertEqual(len(lost), 1)
        self.assertGreaterEqual(lost[0]["end"], 2.0)
        self.ok("recover", "--user", "user", "-o", "back.glb")
        self.assertEqual(self.json("info", "back.glb")["take"], {"start": 0.0, "end": lost[0]["end"]})
        self.assertTrue(self.json("verify", "back.glb")["identical"])
        self.assertEqual(self.json("recover", "--user", "user"), [])
        self.refused(1, ["nothing to recover"], "recover", "--user", "user", "-o", "back.glb")

    def test_errors_are_one_line_with_a_hint(self):
        take = self.take()
        (self.folder / "cut.glb").write_bytes((self.folder / take).read_bytes()[:500])
        (self.folder / "bad.csv").write_text("time,Spinner: Amplitude\n0,x\n")
        (self.folder / "other.csv").write_text("time,Gas\n0,1\n")
        cases = [
            (1, ["nope.glb", "No such file"], "info", "nope.glb"),
            (1, ["cut.glb"], "verify", "cut.glb"),
            (1, ["\"Nope\"", "rigstage tools"], "add", take, "--type", "Nope", "-o", "out.glb"),
            (1, ["\"Gull/A\"", "\"Wave\""], "resimulate", take, "--set", "Gull/A=1", "-o", "out.glb"),
            (1, ["no item \"A\""], "resimulate", take, "--set", "Wave/A=1", "-o", "out.glb"),
            (1, ["takes a number"], "resimulate", take, "--set", "Wave/Amplitude=1x", "-o", "out.glb"),
            (1, ["bad.csv", "line 2", "\"x\""], "record", take, "--seconds", 1, "--tool", "Wave",
             "--drive", "bad.csv", "-o", "out.glb"),
            (1, ["no input \"Gas\"", "Spinner: Amplitude"], "record", take, "--seconds", 1, "--tool", "Wave",
             "--drive", "other.csv", "-o", "out.glb"),
            (1, ["scene.glb", "no take"], "verify", "scene.glb"),
            (1, ["out.fbx", ".glb"], "export", take, "-o", "out.fbx"),
            (1, ["nope.xml", "No such file"], "layout", "nope.xml", "--screenshot", "out.png"),
            (1, ["no/such"], "new", "-o", "no/such/folder.glb"),
            (2, ["rigstage --help"],),
            (2, ["\"fly\"", "rigstage --help"], "fly"),
            (2, ["\"--start\""], "new", "--start", 3, "-o", "out.glb"),
            (2, ["--output", "rigstage new --help"], "new"),
            (2, ["rigstage record --help"], "record", take, "--seconds", "soon", "-o", "out.glb"),
            (2, ["above 0"], "record", take, "--seconds", -1, "-o", "out.glb"),
            (2, ["Tool/Item=value"], "resimulate", take, "--set", "Amplitude", "-o", "out.glb"),
            (2, ["first:last:step"], "sweep", take, "--set", "Wave/Amplitude=1:2:0", "-o", "runs"),
            (2, ["values"], "sweep", take, "--set", "Wave/Amplitude=0:1:1e-9", "-o", "runs"),
            (2, ["empty"], "resimulate", take, "--from", 2, "--to", 1, "-o", "out.glb"),
        ]
        for status, words, *arguments in cases:
            with self.subTest(arguments):
                self.refused(status, words, *arguments)
        self.assertFalse((self.folder / "out.glb").exists())
        self.assertEqual(list((self.folder / "home").iterdir()), [], "state outside of the files named")

    def test_every_level_has_help(self):
        top = self.ok("--help")
        for command in ("new", "add", "info", "record", "resimulate", "sweep", "verify", "export", "recover",
                        "tools"):
            self.assertIn(command, top)
            self.assertIn("--help", self.ok(command, "--help"))


if __name__ == "__main__":
    unittest.main()
