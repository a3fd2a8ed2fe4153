"""Tools, items, inputs, devices and runs as a script sees them."""

import logging
import math
import unittest

import rigstage
from stage_test import StageCase


class Tools(StageCase):
    def setUp(self):
        super().setUp()
        self.tool = self.stage.create("Sinusoid")

    def test_types(self):
        sinusoid = next(t for t in rigstage.tool_types() if t.id == "Sinusoid")
        self.assertEqual((sinusoid.display_name, sinusoid.category), ("Tarvo Sinusoid", "Utility"))
        with self.assertRaises(ValueError):
            self.stage.create("No such type")
        self.assertEqual(len(self.stage.nodes), 2)

    def test_items(self):
        amplitude = next(item for item in self.tool.items if item.label == "Amplitude")
        self.assertEqual((amplitude.id, amplitude.group, amplitude.kind, amplitude.value,
                          amplitude.minimum, amplitude.maximum, amplitude.step),
                         (3, "Sinus Values", "spinner", 1.0, -100.0, 100.0, 0.1))
        self.tool.set("Sinus Values/Amplitude", 1000)
        self.assertEqual(self.tool.get("Amplitude"), 100.0)
        self.tool.set("Absolute Values", True)
        self.assertIs(self.tool.get("Absolute Values"), True)
        for label, value in (("Amplitude", "three"), ("Amplitude", math.nan), ("Amplitude", None),
                             ("Update Values", 1)):
            with self.assertRaises(ValueError):
                self.tool.set(label, value)
        with self.assertRaises(KeyError):
            self.tool.get("Amplitudes")
        with self.assertRaises(ValueError):
            self.tool.press("Amplitude")
        self.tool.press("Update Values")

    def test_tree(self):
        group = self.stage.create("Group", "Pair")
        child = self.stage.create("Sinusoid", parent=group)
        self.assertEqual(child.parent, group)
        self.assertEqual(group.parent, self.stage.root)
        copy = group.clone()
        self.assertEqual([tool.name for tool in copy.children], ["Sinusoid_03"])
        group.delete()
        with self.assertRaises(RuntimeError):
            child.name  # pylint: disable=pointless-statement
        self.assertTrue(self.stage.undo())
        self.assertEqual([tool.name for tool in group.children], ["Sinusoid_02"])
        child.rename("Sinusoid_01")
        self.assertNotEqual(child.name, self.tool.name)

    def test_record_round_trip(self):
        self.tool.set("Amplitude", 4.0)
        for packed in (False, True):
            copy = self.stage.create_from_xml(self.tool.to_xml(packed=packed))
            self.assertEqual(copy.get("Amplitude"), 4.0)
        self.assertIsNone(self.stage.create_from_xml("<RGT/>"))
        with self.assertRaises(ValueError):
            self.stage.create_from_xml("<RGT>")

    def test_profiles(self):
        self.assertIn("Factory Settings", self.tool.profiles)
        self.tool.set("Amplitude", 7.0)
        self.tool.save_profile("Mine")
        self.tool.set("Amplitude", 1.0)
        self.tool.load_profile("Mine")
        self.assertEqual((self.tool.get("Amplitude"), self.tool.profile), (7.0, "Mine"))
        for name in ("Factory Settings", "a/b", ""):
            with self.assertRaises(ValueError):
                self.tool.save_profile(name)
        self.tool.delete_profile("Mine")
        with self.assertRaises(KeyError):
            self.tool.load_profile("Mine")


class Runs(StageCase):
    def setUp(self):
        super().setUp()
        self.tool = self.stage.create("Sinusoid")
        self.pad = self.stage.add_device("Pad", axes=2, hats=2, buttons=4)
        self.input = self.tool.input("Spinner: Amplitude")

    def poses(self):
        node = self.tool.node("SinusNode")
        return [node.matrix(t) for t in node.key_times()]

    def test_the_pipeline(self):
        self.input.bind(self.pad, "Axis", 1)
        self.input.deadzone, self.input.exponent = 0.1, 2.0
        self.input.multiplier, self.input.offset = 3.0, 0.5
        self.pad.set("Axis", 1, -1.0)
        self.stage.record(0.04)
        self.assertEqual((self.input.raw, self.input.value), (-1.0, -2.5))
        self.assertEqual(self.input.recorded[-1], (0.04, -1.0))
        for call, error in ((lambda: self.pad.set("Axis", 9, 0), KeyError),
                            (lambda: self.pad.set("Axis", 0, math.nan), ValueError),
                            (lambda: self.input.bind(self.pad, "Slider", 0), KeyError),
                            (lambda: setattr(self.input, "deadzone", math.inf), ValueError)):
            with self.assertRaises(error):
                call()

    def test_two_buttons_as_one_axis(self):
        self.input.bind_pair((self.pad, "Button", 0), (self.pad, "Button", 1))
        values = []
        presses = {1: (1, 0), 2: (1, 1), 3: (0, 1), 4: (0, 0)}

        def press(t):
            values.append(self.input.raw)
            plus, minus = presses.get(round(t / 0.04), (0, 0))
            self.pad.set("Button", 0, plus)
            self.pad.set("Button", 1, minus)

        self.stage.record(0.2, press)
        self.assertEqual([raw for _, raw in self.input.recorded[1:]], [1, 0, -1, 0, 0])

    def test_a_pad_that_is_unplugged_and_comes_back(self):
        self.input.bind(self.pad, "Axis", 0)
        self.pad.remove()
        self.assertEqual((self.input.control, self.input.pending, self.input.raw), (None, True, 0.0))
        self.stage.add_device("Pad", axes=2)
        self.assertEqual((self.input.control, self.input.pending), ("Axis 1", False))

    def test_unplugged_in_the_middle_of_a_take(self):
        self.input.bind(self.pad, "Axis", 0)

        def hand(t):
            if t < 0.5:
                self.pad.set("Axis", 0, 1.0)
            elif abs(t - 0.6) < 1e-9:
                self.pad.remove()

        self.stage.record(1.0, hand)
        take = self.poses()
        self.assertEqual(len(take), 26)
        self.assertEqual(self.input.recorded[-1][1], 1.0)  # the foot stays where it was
        self.stage.resimulate(0.0, 1.0)
        self.assertEqual(self.poses(), take)

    def test_what_a_script_raises_ends_the_run(self):
        def fail(t):
            if t > 0.2:
                raise LookupError("enough")

        with self.assertRaises(LookupError):
            self.stage.record(1.0, fail)
        self.assertFalse(self.stage.is_running)
        self.stage.undo()
        self.stage.time = 0
        self.stage.record(0.2)

    def test_a_run_holds_what_it_works_on(self):
        tool = self.stage.create("Sinusoid")

        def hand(t):
            for forbidden in (tool.delete, self.stage.close):
                with self.assertRaisesRegex(RuntimeError, "while a run is on"):
                    forbidden()

        self.stage.record(0.4, before_frame=hand)
        self.assertEqual(len(tool.node("SinusNode").key_times()), 11)

    def test_progress_and_slow_motion(self):
        self.stage.time_scale = 2
        self.stage.record(1.0)
        heard = []
        self.stage.resimulate(0, 1, heard.append)
        self.assertGreater(len(heard), 1)
        self.assertEqual(heard, sorted(set(heard)))
        self.assertEqual(heard[-1], 1.0)
        self.assertEqual(self.stage.time_scale, 2)
        with self.assertRaises(ValueError):
            self.stage.time_scale = 0
        with self.assertRaises(ValueError):
            self.stage.record(-1)

    def test_an_output_drives_another_tool(self):
        other = self.stage.create("Sinusoid")
        source = next(d for d in self.stage.devices if d.name == self.tool.name)
        other.input("Spinner: Amplitude").bind(source, "Sinus value", 0)
        self.stage.record(1.0)
        self.assertAlmostEqual(self.tool.outputs["Sinus value"], math.sin(1.0))
        self.assertNotEqual(other.input("Spinner: Amplitude").recorded[-1][1], 0.0)


if __name__ == "__main__":
    logging.disable(logging.CRITICAL)
    unittest.main()
