# SPDX-License-Identifier: MIT
# The compiled half, for type checkers. Tuples are those of the native module's own comments.
import typing

import numpy as np
import numpy.typing as npt

class PackageError(ValueError):
    """What can't be read or calculated, in the component's words."""

needs_mole_fraction: int
needs_molarity: int
needs_activity: int
needs_temperature: int
needs_pressure: int
needs_fugacity: int

class Package:
    @property
    def name(self) -> str: ...
    @property
    def description(self) -> str: ...
    @property
    def thermo_version(self) -> str: ...
    def compounds(self) -> list[tuple[str, str, str, str, float, float]]: ...
    def reactions(self) -> list[tuple[str, str, str, str, str, str, str, str, list[float]]]: ...
    def block(self) -> bytes: ...
    def check(self) -> list[tuple[str, bool, str]]: ...
    def dependencies(self, property: str, reactions: typing.Sequence[int], phase: typing.Optional[bytes]) -> int: ...
    def calculate(
        self,
        property: str,
        reactions: typing.Sequence[int],
        shape: typing.Sequence[int],
        inputs: typing.Sequence[typing.Optional[npt.NDArray[np.float64]]],
        is_ideal_gas: bool,
        is_tolerant: bool,
    ) -> npt.NDArray[np.float64]: ...

def load_file(path: typing.Union[str, bytes]) -> tuple[list[Package], list[str]]: ...
def load_block(block: bytes) -> tuple[list[Package], list[str]]: ...
def user_templates_path() -> str: ...
