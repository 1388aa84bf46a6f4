# SPDX-License-Identifier: MIT
"""Reaction packages of REKA in Python: rates, equilibrium constants and heats of reaction over grids of states.

    >>> import reka
    >>> package = reka.template("Methanol synthesis")
    >>> x = {"hydrogen": 0.7, "carbon monoxide": 0.2, "carbon dioxide": 0.08, "methanol": 0.01, "water": 0.01}
    >>> package.rates(T=500, P=50e5, x=x, model="ideal gas")        # one for each kinetic reaction, mol/s/kg
    array([ 0.00614607, -0.04162591])

Numbers are those that the component gives to a simulator, bit for bit, and what it refuses is refused in its words.
Temperatures are in K, pressures and fugacities in Pa, molarities in mol/m3.
"""

import dataclasses
import os
import pathlib
import typing
import warnings

import numpy as np
import numpy.typing as npt

from . import _native
from ._native import PackageError

__all__ = ["Compound", "Finding", "Package", "PackageError", "Reaction", "read", "read_block", "template", "templates"]

Path = typing.Union[str, "os.PathLike[str]"]
Selection = typing.Union[None, str, typing.Sequence[str]]
#: Values for each compound: an array whose last axis is the package's compounds, or numbers or arrays by their names.
PerCompound = typing.Union[npt.ArrayLike, typing.Mapping[str, npt.ArrayLike]]

_IDEAL_GAS = "ideal gas"


@dataclasses.dataclass(frozen=True)
class Compound:
    """A compound of a package."""

    id: str
    name: str  #: by which expressions and arguments name it
    cas_number: str
    formula: str
    molecular_weight: float  #: g/mol
    charge: float  #: elementary charges


@dataclasses.dataclass(frozen=True)
class Reaction:
    """A reaction of a package, with its texts as they were written."""

    id: str
    phase: str
    type: str  #: "Kinetic" or "Equilibrium"
    basis: str  #: of the rate: "Homogeneous", mol/s/m3, or "Heterogeneous", mol/s/kg of catalyst
    equilibrium_basis: str  #: of the constant, such as "Fugacity"
    rate: str
    equilibrium_constant: str
    heat: str
    stoichiometry: typing.Mapping[str, float]  #: coefficients by names of compounds: reactants negative

    def __str__(self) -> str:
        """The reaction written out: "2 hydrogen + carbon monoxide = methanol"."""

        def side(sign: int) -> str:
            terms = []
            for name, coefficient in self.stoichiometry.items():
                if coefficient * sign > 0:
                    terms.append(name if abs(coefficient) == 1 else f"{abs(coefficient):g} {name}")
            return " + ".join(terms)

        return f"{side(-1)} = {side(1)}"


@dataclasses.dataclass(frozen=True)
class Finding:
    """What is wrong with a package, or looks as if it were."""

    reaction: str  #: empty for what concerns the whole package
    is_fault: bool  #: the editor wouldn't accept the package; otherwise a warning
    text: str

    def __str__(self) -> str:
        place = f"reaction {self.reaction}: " if self.reaction else ""
        return f"{place}{'fault' if self.is_fault else 'warning'}: {self.text}"


class Package:
    """A reaction package. `read`, `template` and their like make it; it doesn't change.

    The three calculations take the same arguments:

    T, P        temperature in K and pressure in Pa: numbers, or arrays that broadcast with each other and with all but
                the last axis of the others
    x           mole fractions: an array whose last axis is `compounds`, or numbers or arrays by names of compounds, with
                0 for those that aren't named
    molarity, activity, fugacity
                the same for molarities (mol/m3), activities and fugacities (Pa)
    model       "ideal gas" takes what isn't given of the last three from T, P and x: x P/(R T), x P/(1 bar) and x P
    phase       of the reactions; without it each is calculated in its own
    reactions   the id of a reaction, or several; without it all of the kind, and of `phase` if that is given
    errors      "raise" (a PackageError where an expression has no value) or "nan" (a NaN there)

    Only what the expressions read has to be given. The result has the common shape of the arguments and behind it an
    axis of the reactions, unless `reactions` is a single id. All is done in one call without a loop in Python, and the
    interpreter is free for other threads meanwhile.
    """

    def __init__(self, native: _native.Package) -> None:
        self._native = native
        #: The compounds, in the user's order.
        self.compounds: tuple[Compound, ...] = tuple(Compound(*row) for row in native.compounds())
        names = [compound.name for compound in self.compounds]
        rows = native.reactions()
        #: The reactions, in the user's order.
        self.reactions: tuple[Reaction, ...] = tuple(
            Reaction(*row[:-1], {name: part for name, part in zip(names, row[-1]) if part != 0}) for row in rows
        )
        #: The coefficients, a row for each reaction and a column for each compound.
        self.stoichiometry: npt.NDArray[np.float64] = np.array([row[-1] for row in rows], dtype=float).reshape(
            len(rows), len(names)
        )
        self.stoichiometry.flags.writeable = False

    @property
    def name(self) -> str:
        return self._native.name

    @property
    def description(self) -> str:
        return self._native.description

    @property
    def thermo_version(self) -> str:
        """Of the interfaces by which the package reads a simulator's material: "1.0" or "1.1"."""
        return self._native.thermo_version

    def __repr__(self) -> str:
        return f"<reka.Package {self.name!r}: {len(self.compounds)} compounds, {len(self.reactions)} reactions>"

    def to_block(self) -> bytes:
        """The package as a simulator's document holds it. `read_block` is the way back."""
        return self._native.block()

    def check(self) -> list[Finding]:
        """What the editor would refuse, ask or warn of, and what else is likely not meant; empty for a good package."""
        return [Finding(*row) for row in self._native.check()]

    def rates(
        self,
        *,
        T: typing.Optional[npt.ArrayLike] = None,
        P: typing.Optional[npt.ArrayLike] = None,
        x: typing.Optional[PerCompound] = None,
        molarity: typing.Optional[PerCompound] = None,
        activity: typing.Optional[PerCompound] = None,
        fugacity: typing.Optional[PerCompound] = None,
        model: typing.Optional[str] = None,
        phase: typing.Optional[str] = None,
        reactions: Selection = None,
        errors: str = "raise",
    ) -> npt.NDArray[np.float64]:
        """Rates of the kinetic reactions, in mol/s/m3, or mol/s/kg of catalyst where `Reaction.basis` says so.

        >>> package.rates(T=np.linspace(450, 550, 11), P=50e5, x=x, model="ideal gas").shape    # doctest: +SKIP
        (11, 2)
        """
        state = {"T": T, "P": P, "x": x, "molarity": molarity, "activity": activity, "fugacity": fugacity}
        return self._calculate("ReactionRate", "Kinetic", state, model, phase, reactions, errors)

    def equilibrium_constants(
        self,
        *,
        T: typing.Optional[npt.ArrayLike] = None,
        P: typing.Optional[npt.ArrayLike] = None,
        x: typing.Optional[PerCompound] = None,
        molarity: typing.Optional[PerCompound] = None,
        activity: typing.Optional[PerCompound] = None,
        fugacity: typing.Optional[PerCompound] = None,
        model: typing.Optional[str] = None,
        phase: typing.Optional[str] = None,
        reactions: Selection = None,
        errors: str = "raise",
    ) -> npt.NDArray[np.float64]:
        """Constants of the equilibrium reactions, in the unit of `Reaction.equilibrium_basis`."""
        state = {"T": T, "P": P, "x": x, "molarity": molarity, "activity": activity, "fugacity": fugacity}
        return self._calculate("ChemicalEquilibriumConstant", "Equilibrium", state, model, phase, reactions, errors)

    def heats(
        self,
        *,
        T: typing.Optional[npt.ArrayLike] = None,
        P: typing.Optional[npt.ArrayLike] = None,
        x: typing.Optional[PerCompound] = None,
        molarity: typing.Optional[PerCompound] = None,
        activity: typing.Optional[PerCompound] = None,
        fugacity: typing.Optional[PerCompound] = None,
        model: typing.Optional[str] = None,
        phase: typing.Optional[str] = None,
        reactions: Selection = None,
        errors: str = "raise",
    ) -> npt.NDArray[np.float64]:
        """Heats of all reactions, in J/mol: negative where a reaction gives off heat."""
        state = {"T": T, "P": P, "x": x, "molarity": molarity, "activity": activity, "fugacity": fugacity}
        return self._calculate("EnthalpyOfReaction", "", state, model, phase, reactions, errors)

    def _calculate(
        self,
        prop: str,
        kind: str,
        state: dict[str, typing.Any],
        model: typing.Optional[str],
        phase: typing.Optional[str],
        reactions: Selection,
        errors: str,
    ) -> npt.NDArray[np.float64]:
        if model not in (None, _IDEAL_GAS):
            raise ValueError(f'model is "{_IDEAL_GAS}" or None, not {model!r}')
        if errors not in ("raise", "nan"):
            raise ValueError(f'errors is "raise" or "nan", not {errors!r}')
        selected = self._select(kind, phase, reactions)
        needs = self._native.dependencies(prop, selected, None if phase is None else phase.encode("utf-8", "replace"))
        given = {name: value for name, value in state.items() if value is not None}
        self._require(needs, given, model)
        arrays = [self._array(name, given[name]) if name in given else None for name in state]
        shape = np.broadcast_shapes(
            *(
                array.shape if index < 2 else array.shape[:-1]
                for index, array in enumerate(arrays)
                if array is not None
            )
        )
        spread = [
            None if array is None else np.broadcast_to(array, shape if index < 2 else (*shape, len(self.compounds)))
            for index, array in enumerate(arrays)
        ]
        values = self._native.calculate(prop, selected, shape, spread, model is not None, errors == "nan")
        return values[..., 0] if isinstance(reactions, str) else values

    def _select(self, kind: str, phase: typing.Optional[str], reactions: Selection) -> list[int]:
        if reactions is None:
            return [
                index
                for index, reaction in enumerate(self.reactions)
                if kind in ("", reaction.type) and (phase is None or _folded(reaction.phase) == _folded(phase))
            ]
        places: dict[str, int] = {}
        for index, reaction in enumerate(self.reactions):
            places.setdefault(_folded(reaction.id), index)
        selected = []
        for name in [reactions] if isinstance(reactions, str) else reactions:
            if _folded(name) not in places:
                raise PackageError(f"Unknown reaction ID: {name}")
            selected.append(places[_folded(name)])
        return selected

    def _require(self, needs: int, given: typing.Mapping[str, typing.Any], model: typing.Optional[str]) -> None:
        wanted = {
            "T": (_native.needs_temperature, "temperatures"),
            "P": (_native.needs_pressure, "pressures"),
            "x": (_native.needs_mole_fraction, "mole fractions"),
            "molarity": (_native.needs_molarity, "molarities"),
            "activity": (_native.needs_activity, "activities"),
            "fugacity": (_native.needs_fugacity, "fugacities"),
        }
        modelled = {"molarity": ("T", "P", "x"), "activity": ("P", "x"), "fugacity": ("P", "x")}
        for name, (bit, words) in wanted.items():
            if not needs & bit or name in given:
                continue
            if name not in modelled:
                raise TypeError(f"the expressions read {words}: give {name}")
            if model is None:
                raise TypeError(f'the expressions read {words}: give {name}, or model="{_IDEAL_GAS}"')
            missing = [source for source in modelled[name] if source not in given]
            if missing:
                raise TypeError(f"the expressions read {words}, which an ideal gas has from {', '.join(missing)}")

    def _array(self, name: str, value: typing.Any) -> npt.NDArray[np.float64]:
        if isinstance(value, np.ma.MaskedArray):
            value = value.filled(np.nan)
        if name in ("T", "P"):
            return np.asarray(value, dtype=float)
        if isinstance(value, typing.Mapping):
            return self._by_names(name, value)
        array = np.asarray(value, dtype=float)
        if array.ndim == 0 or array.shape[-1] != len(self.compounds):
            raise ValueError(
                f"{name}: the last axis is for the {len(self.compounds)} compounds, and the shape is {array.shape}"
            )
        return array

    def _by_names(self, name: str, values: typing.Mapping[str, typing.Any]) -> npt.NDArray[np.float64]:
        places: dict[str, int] = {}
        for index, compound in enumerate(self.compounds):
            places.setdefault(_folded(compound.name), index)
        parts = {key: np.asarray(value, dtype=float) for key, value in values.items()}
        array = np.zeros((*np.broadcast_shapes(*(part.shape for part in parts.values())), len(self.compounds)))
        for key, part in parts.items():
            place = places.pop(_folded(key), None)
            if place is None:
                raise ValueError(f'{name}: the package has no compound "{key}", or it is there twice')
            array[..., place] = part
        return array


def _folded(text: str) -> str:
    """What the component compares names by: the letters A to Z without their case."""
    return "".join(letter.lower() if "A" <= letter <= "Z" else letter for letter in text)


def _packages(loaded: tuple[list[_native.Package], list[str]]) -> list[Package]:
    packages, notes = loaded
    for note in notes:
        warnings.warn(note, stacklevel=3)
    return [Package(package) for package in packages]


def read(path: Path) -> list[Package]:
    """The packages of a file: of a file of templates, a stored block, or a document (JSON with a member "package")."""
    return _packages(_native.load_file(os.fsencode(path)))


def read_block(block: bytes) -> Package:
    """The package of a stored block, as `Package.to_block` gives it."""
    return _packages(_native.load_block(block))[0]


def templates() -> list[Package]:
    """The user's templates, which the editor keeps; without any, those that are shipped."""
    user = _native.user_templates_path()
    shipped = pathlib.Path(__file__).parent / "data" / "REKAConfig.dat"
    return _packages(_native.load_file(user if user and os.path.exists(user) else str(shipped)))


def template(name: str) -> Package:
    """The template of that name, the case of letters ignored."""
    packages = templates()
    for package in packages:
        if _folded(package.name) == _folded(name):
            return package
    raise PackageError(f'no template "{name}"; there are: {", ".join(package.name for package in packages)}')
