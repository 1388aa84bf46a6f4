# SPDX-License-Identifier: MIT
"""Draws the equilibrium constant of a dissociation over the temperature as Arrhenius would: its logarithm over 1/T.

    python3 arrhenius.py [PICTURE]
"""

import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

import reka

package = reka.template("Nitrogen tetroxide dissociation")
T = np.linspace(270, 360, 91)
K = package.equilibrium_constants(T=T, reactions="dissociation")
heat = package.heats(T=298.15, reactions="dissociation")

slope = -8.314 * np.polyfit(1 / T, np.log(K), 1)[0]
print(f"{package.reactions[0]}: K = {K[T == 298][0]:.0f} Pa at 298 K")
print(f"The line has a slope of {slope / 1000:.2f} kJ/mol, the heat of reaction is {heat / 1000:.2f} kJ/mol.")

figure, axes = plt.subplots(figsize=(6, 4), layout="constrained")
axes.semilogy(1000 / T, K / 1e5)
axes.set_xlabel("1000 K / T")
axes.set_ylabel("equilibrium constant, bar")
axes.set_title(package.name)
axes.grid(True, which="both", alpha=0.3)
figure.savefig(sys.argv[1] if len(sys.argv) > 1 else "arrhenius.png", dpi=120)
