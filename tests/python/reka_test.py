# SPDX-License-Identifier: MIT
"""The module as pip installs it. The numbers themselves are held against the component's in GridCalculation_test.cpp."""

import doctest
import json
import os
import pathlib
import tempfile
import threading
import unittest
import warnings

import numpy as np

import reka

DOCUMENTS = pathlib.Path(__file__).parents[2] / "examples" / "documents"
GAS = {
    "hydrogen": 0.7,
    "carbon monoxide": 0.2,
    "carbon dioxide": 0.08,
    "methanol": 0.01,
    "water": 0.01,
}
R = 8.314462618


def document(name):
    return reka.read(DOCUMENTS / f"{name}.json")[0]


class Reading(unittest.TestCase):
    def test_a_document_tells_what_it_holds(self):
        package = document("methanol-synthesis")
        self.assertEqual(package.name, "Methanol synthesis")
        self.assertEqual(package.thermo_version, "1.1")
        self.assertEqual(repr(package), "<reka.Package 'Methanol synthesis': 5 compounds, 2 reactions>")
        self.assertEqual(package.compounds[2].name, "methanol")
        self.assertEqual(package.compounds[2].cas_number, "67-56-1")
        self.assertEqual(package.compounds[2].molecular_weight, 32.042)
        synthesis = package.reactions[0]
        self.assertEqual((synthesis.id, synthesis.phase, synthesis.type), ("methanol", "Vapor", "Kinetic"))
        self.assertEqual((synthesis.basis, synthesis.equilibrium_basis), ("Heterogeneous", "Fugacity"))
        self.assertEqual(str(synthesis), "carbon dioxide + 3 hydrogen = methanol + water")
        self.assertEqual(synthesis.heat, "-R*LOG(10)*3066")
        np.testing.assert_array_equal(package.stoichiometry, [[-1, -3, 1, 1, 0], [-1, -1, 0, 1, 1]])

    def test_a_package_survives_its_block(self):
        package = document("methanol-synthesis")
        again = reka.read_block(package.to_block())
        self.assertEqual(again.to_block(), package.to_block())
        self.assertEqual(again.reactions, package.reactions)

    def test_templates_are_the_shipped_ones_for_a_new_user(self):
        names = [package.name for package in reka.templates()]
        self.assertEqual(len(names), len(list(DOCUMENTS.glob("*.json"))))
        self.assertEqual(reka.template("methanol SYNTHESIS").name, "Methanol synthesis")
        with self.assertRaisesRegex(reka.PackageError, '^no template "nothing"; there are: .*Methanol synthesis'):
            reka.template("nothing")

    def test_templates_are_the_users_where_there_are_some(self):
        one = document("ammonia-synthesis").to_block()
        folder = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "NAVO" / "data"
        folder.mkdir(parents=True, exist_ok=True)
        file = folder / "REKAConfig.dat"
        file.write_bytes((1).to_bytes(4, "little") + len(one).to_bytes(4, "little") + one)
        try:
            self.assertEqual([package.name for package in reka.templates()], ["Ammonia synthesis"])
        finally:
            file.unlink()

    def test_what_is_no_package_is_refused(self):
        with self.assertRaisesRegex(reka.PackageError, "^/nowhere: the file can't be opened$"):
            reka.read("/nowhere")
        with self.assertRaises(reka.PackageError):
            reka.read_block(b"\x00\x00")
        with self.assertRaises(ValueError):
            reka.read_block(b"")

    def test_an_old_block_is_told_to_be_corrected(self):
        # Version 0: no marker, one compound, one reaction with a rate in kmol/h.
        def wide(text):
            return len(text).to_bytes(4, "little") + ((text + "\0").encode("utf-16-le") if text else b"")

        def narrow(text):
            return len(text).to_bytes(4, "little") + ((text + "\0").encode() if text else b"")

        block = wide("old") + wide("") + narrow("") + (1).to_bytes(4, "little")
        block += wide("A") + wide("") + wide("A") + wide("") + np.array([10.0, 0.0]).tobytes()
        block += (1).to_bytes(4, "little") + wide("r") + wide("Liquid") + wide("")
        block += (1).to_bytes(4, "little") + (0).to_bytes(4, "little") + narrow("3600") + narrow("") + narrow("")
        block += np.array([-1.0]).tobytes() + b"\0\0\0"
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            package = reka.read_block(block)
        self.assertEqual(len(caught), 1)
        self.assertEqual(caught[0].filename, __file__)
        self.assertEqual(package.rates(reactions="r"), 1000)


class Calculating(unittest.TestCase):
    def setUp(self):
        self.package = document("methanol-synthesis")

    def rates(self, **arguments):
        return self.package.rates(**{"T": 500.0, "P": 50e5, "x": GAS, "model": "ideal gas", **arguments})

    def test_the_shape_is_that_of_the_arguments_and_the_reactions(self):
        self.assertEqual(self.rates().shape, (2,))
        self.assertEqual(self.rates(reactions="methanol").shape, ())
        self.assertEqual(self.rates(reactions=["methanol"]).shape, (1,))
        self.assertEqual(self.rates(T=np.linspace(450, 550, 7)).shape, (7, 2))
        self.assertEqual(self.rates(T=np.linspace(450, 550, 7)[:, None], P=np.ones(3) * 1e6).shape, (7, 3, 2))
        self.assertEqual(self.rates(T=np.empty((0, 4))).shape, (0, 4, 2))
        self.assertEqual(self.package.equilibrium_constants().shape, (0,))

    def test_a_grid_has_the_values_of_its_points(self):
        T = np.linspace(450, 550, 5)[:, None]
        P = np.array([1e6, 3e6, 5e6])
        grid = self.rates(T=T, P=P)
        for i in range(5):
            for j in range(3):
                np.testing.assert_array_equal(grid[i, j], self.rates(T=T[i, 0], P=P[j]))

    def test_compounds_by_name_are_those_by_place(self):
        places = [GAS[compound.name] for compound in self.package.compounds]
        np.testing.assert_array_equal(self.rates(), self.rates(x=places))
        np.testing.assert_array_equal(self.rates(), self.rates(x={name.upper(): part for name, part in GAS.items()}))
        hydrogen = np.linspace(0.5, 0.7, 4)
        self.assertEqual(self.rates(x={**GAS, "hydrogen": hydrogen}).shape, (4, 2))

    def test_an_ideal_gas_has_these_fugacities_molarities_and_activities(self):
        x = np.array([GAS[compound.name] for compound in self.package.compounds])
        np.testing.assert_array_equal(self.rates(), self.rates(model=None, fugacity=x * 50e5))
        cell = json.loads((DOCUMENTS / "methanol-synthesis.json").read_text())["package"]
        cell["reactionRateEquation"] = ["C(hydrogen)", "A(hydrogen)"]
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "cell.json"
            path.write_text(json.dumps({"package": cell}))
            values = reka.read(path)[0].rates(T=500, P=50e5, x=x, model="ideal gas")
        np.testing.assert_allclose(values, [x[1] * 50e5 / (R * 500), x[1] * 50], rtol=1e-15)

    def test_constants_and_heats(self):
        package = document("nitrogen-tetroxide-dissociation")
        # Verhoek and Daniels, J. Am. Chem. Soc. 53 (1931) 1250: 0.1426 atm at 25 °C.
        K = package.equilibrium_constants(T=298.15, reactions="dissociation")
        self.assertAlmostEqual(float(K) / 101325, 0.1426, 6)
        self.assertEqual(self.package.heats().shape, (2,))
        self.assertAlmostEqual(float(self.package.heats(reactions="methanol")), -8.314 * np.log(10) * 3066, 6)

    def test_a_missing_argument_is_named(self):
        for arguments, words in [
            ({"T": 500, "P": 1e5, "x": GAS}, 'the expressions read fugacities: give fugacity, or model="ideal gas"'),
            ({"fugacity": GAS}, "the expressions read temperatures: give T"),
            ({"T": 500, "model": "ideal gas"}, "the expressions read fugacities, which an ideal gas has from P, x"),
        ]:
            with self.subTest(words), self.assertRaises(TypeError) as caught:
                self.package.rates(**arguments)
            self.assertEqual(str(caught.exception), words)

    def test_a_wrong_argument_is_told(self):
        for arguments, words in [
            ({"model": "liquid"}, "model is \"ideal gas\" or None, not 'liquid'"),
            ({"errors": "ignore"}, "errors is \"raise\" or \"nan\", not 'ignore'"),
            ({"x": [0.5, 0.5]}, "x: the last axis is for the 5 compounds, and the shape is (2,)"),
            ({"x": 1.0}, "x: the last axis is for the 5 compounds, and the shape is ()"),
            ({"x": {"iron": 1}}, 'x: the package has no compound "iron", or it is there twice'),
            ({"x": {"water": 1, "Water": 1}}, 'x: the package has no compound "Water", or it is there twice'),
            ({"reactions": "none"}, "Unknown reaction ID: none"),
            ({"reactions": "methanol", "phase": "Liquid"},
             'Reaction "methanol" is defined for phase Vapor; cannot perform calculation for requested phase Liquid'),
        ]:  # fmt: skip
            with self.subTest(words), self.assertRaises(ValueError) as caught:
                self.rates(**arguments)
            self.assertEqual(str(caught.exception), words)
        with self.assertRaises(ValueError):
            self.rates(T=[1, 2], P=[1, 2, 3])

    def test_a_phase_selects_its_reactions(self):
        self.assertEqual(self.rates(phase="vapor").shape, (2,))
        self.assertEqual(self.rates(phase="Liquid").shape, (0,))

    def test_a_point_without_a_value_is_told_or_marked(self):
        x = {**GAS, "hydrogen": np.array([0.0, 0.7])}
        with self.assertRaisesRegex(reka.PackageError, "^Failed to calculate ReactionRate for reaction methanol: "):
            self.rates(x=x)
        marked = self.rates(x=x, errors="nan")
        self.assertTrue(np.isnan(marked[0]).all())
        self.assertTrue(np.isfinite(marked[1]).all())

    def test_arguments_lie_as_they_lie(self):
        T = np.linspace(450, 550, 8, dtype=np.float64)
        for other in (T[::2], T[::-1], T.astype(np.float32), T.astype(">f8"), list(T), np.asfortranarray(T[:, None])):
            expected = self.rates(T=np.ascontiguousarray(other, dtype=float))
            np.testing.assert_array_equal(self.rates(T=other), expected)
        masked = np.ma.array(T, mask=T > 500)
        np.testing.assert_array_equal(np.isnan(self.rates(T=masked, errors="nan")[:, 0]), T > 500)
        packed = np.zeros(8, dtype=[("flag", "u1"), ("T", "f8")])
        packed["T"] = T
        np.testing.assert_array_equal(self.rates(T=packed["T"]), self.rates(T=T))

    def test_threads_share_a_package(self):
        expected = {T: self.rates(T=np.full(5000, T)) for T in (450.0, 500.0, 550.0)}
        faults = []

        def work(T):
            for _ in range(20):
                if not np.array_equal(self.rates(T=np.full(5000, T)), expected[T]):
                    faults.append(T)

        threads = [threading.Thread(target=work, args=(T,)) for T in expected]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(faults, [])


class Checking(unittest.TestCase):
    def test_shipped_packages_have_no_fault(self):
        for package in reka.templates():
            self.assertEqual([str(finding) for finding in package.check() if finding.is_fault], [], package.name)

    def test_a_fault_is_found(self):
        content = json.loads((DOCUMENTS / "methanol-synthesis.json").read_text())["package"]
        content["stoichiometry[methanol]"] = [-1, -2, 1, 1, 0]
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "faulty.json"
            path.write_text(json.dumps({"package": content}))
            findings = reka.read(path)[0].check()
        self.assertTrue(any(finding.reaction == "methanol" for finding in findings))
        self.assertTrue(str(findings[0]).startswith("reaction methanol: "))


def load_tests(loader, tests, pattern):
    tests.addTests(doctest.DocTestSuite(reka))
    return tests


if __name__ == "__main__":
    unittest.main()
