// SPDX-License-Identifier: MIT
// The half of the Python module that is compiled: packages as one class of plain values, arrays lent to the calculation
// as they lie. What a user meets, with its names, units and words, is python/reka/__init__.py.

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "python/native/GridCalculation.h"
#include "python/native/Packages.h"
#include "rekatool/CheckPackages.h"
#include "text/Utf8.h"

namespace py = pybind11;

namespace rekapython {

namespace {

using Package = std::unique_ptr<CGridPackage>;
using Numbers = py::array_t<double>;

std::string Text(const reka::CBstr& text) {
    return reka::Utf8FromUtf16(text.View());
}

const reka::ReactionProperty& FindProperty(const std::string& name) {
    const reka::CBstr text = reka::CBstr::Make(reka::Utf16FromUtf8(name));
    const reka::ReactionProperty* const property = reka::FindReactionProperty(text.Get());
    if (!property) throw PackageError("Unknown or unsupported reaction property \"" + name + "\"");
    return *property;
}

/// The packages of `read`, which adds to the notes that it gets, and these notes.
template <class Read>
std::pair<std::vector<Package>, std::vector<std::string>> Load(Read&& read) {
    std::vector<std::string> notes;
    std::vector<Package> packages;
    for (auto& definition : read(notes)) packages.push_back(std::make_unique<CGridPackage>(std::move(definition)));
    return {std::move(packages), std::move(notes)};
}

auto LoadFile(const std::string& path) {
    return Load([&](std::vector<std::string>& notes) { return rekatool::LoadDefinitions(path, notes); });
}

auto LoadBlock(const py::bytes& block) {
    const std::string_view bytes = block;
    return Load([&](std::vector<std::string>& notes) {
        rekatool::Definitions definitions;
        definitions.push_back(
            rekatool::LoadDefinition({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, notes));
        return definitions;
    });
}

/// Id, name, CAS number, formula, molecular weight and charge of each compound.
py::list ListCompounds(const CGridPackage& package) {
    py::list list;
    for (const auto& compound : package.Definition().compounds) {
        list.append(py::make_tuple(Text(compound->id), Text(compound->name), Text(compound->casNumber),
                                   Text(compound->formula), compound->molecularWeight, compound->charge));
    }
    return list;
}

/// Id, phase, type, basis, basis of the constant, the three texts and the coefficients of each reaction.
py::list ListReactions(const CGridPackage& package) {
    py::list list;
    for (const auto& reaction : package.Definition().reactions) {
        std::vector<double> coefficients;
        for (std::size_t i = 0; i < package.Definition().compounds.size(); ++i) {
            coefficients.push_back(reaction->CoefficientOf(i));
        }
        const auto basis = static_cast<std::int32_t>(reaction->equilibriumBasis);
        const bool isKnown = basis >= 0 && basis < reka::equilibriumBasisCount;
        list.append(py::make_tuple(Text(reaction->id), Text(reaction->phase),
                                   reka::Utf8FromUtf16(reka::WordOf(reaction->type, reka::reactionTypeWords)),
                                   reka::Utf8FromUtf16(reka::WordOf(reaction->rateBasis, reka::rateBasisWords)),
                                   reka::Utf8FromUtf16(isKnown ? reka::equilibriumBasisWords[basis] : u""),
                                   reka::Utf8FromUtf16(reaction->rateEquation),
                                   reka::Utf8FromUtf16(reaction->equilibriumConstantEquation),
                                   reka::Utf8FromUtf16(reaction->heatEquation), coefficients));
    }
    return list;
}

py::bytes BlockOf(const CGridPackage& package) {
    const std::vector<std::uint8_t> block = WriteBlock(package.Definition());
    return {reinterpret_cast<const char*>(block.data()), block.size()};
}

/// Reaction, whether it is a fault, and text of each finding.
py::list Check(const CGridPackage& package) {
    rekatool::PackageFile file;
    file.form = rekatool::FileForm::Block;
    file.blocks.push_back(WriteBlock(package.Definition()));
    py::list list;
    for (const rekatool::Finding& finding : rekatool::CheckPackages(file)) {
        list.append(py::make_tuple(finding.reaction, finding.isFault, finding.text));
    }
    return list;
}

std::uint32_t DependenciesOf(const CGridPackage& package, const std::string& property,
                             const std::vector<std::size_t>& reactions, const std::optional<std::string>& phase) {
    std::optional<std::u16string> asked;
    if (phase) asked = reka::Utf16FromUtf8(*phase);
    return package.Dependencies(FindProperty(property), reactions, asked);
}

/// How an array that has the grid's axes, and behind them one of compounds if `isPerCompound`, is walked.
GridInput InputOf(const std::optional<Numbers>& array, const std::vector<std::size_t>& shape, bool isPerCompound,
                  std::size_t compoundCount) {
    GridInput input;
    if (!array) return input;
    const auto axes = static_cast<py::ssize_t>(shape.size());
    bool fits = array->ndim() == axes + (isPerCompound ? 1 : 0);
    for (py::ssize_t axis = 0; fits && axis < axes; ++axis) {
        fits = static_cast<std::size_t>(array->shape(axis)) == shape[static_cast<std::size_t>(axis)];
        input.steps.push_back(array->strides(axis));
    }
    if (fits && isPerCompound) {
        fits = static_cast<std::size_t>(array->shape(axes)) == compoundCount;
        input.compoundStep = array->strides(axes);
    }
    if (!fits) throw py::value_error("an array hasn't the shape of the grid");
    input.first = static_cast<const char*>(array->request().ptr);
    return input;
}

Numbers Calculate(CGridPackage& package, const std::string& property, const std::vector<std::size_t>& reactions,
                  const std::vector<std::size_t>& shape, const std::vector<std::optional<Numbers>>& inputs,
                  bool isIdealGas, bool isTolerant) {
    const std::size_t compounds = package.Definition().compounds.size();
    for (const std::size_t index : reactions) {
        if (index >= package.Definition().reactions.size()) throw py::index_error("no such reaction");
    }
    GridState state;
    state.shape = shape;
    GridInput* const targets[] = {&state.temperature, &state.pressure, &state.moleFraction,
                                  &state.molarity,    &state.activity, &state.fugacity};
    if (inputs.size() != std::size(targets)) throw py::value_error("there are six inputs");
    for (std::size_t i = 0; i < inputs.size(); ++i) *targets[i] = InputOf(inputs[i], shape, i >= 2, compounds);
    state.isIdealGas = isIdealGas;
    std::vector<std::size_t> resultShape = shape;
    resultShape.push_back(reactions.size());
    Numbers results(resultShape);
    double* const target = results.mutable_data();
    const reka::ReactionProperty& wanted = FindProperty(property);
    {
        const py::gil_scoped_release released;
        package.Calculate(wanted, reactions, state, isTolerant, target, [] {
            const py::gil_scoped_acquire acquired;
            if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        });
    }
    return results;
}

}  // namespace

}  // namespace rekapython

PYBIND11_MODULE(_native, module) {
    using namespace rekapython;
    module.doc() = "What reka is made of; use that.";
    py::register_exception<PackageError>(module, "PackageError", PyExc_ValueError);
    module.attr("needs_mole_fraction") = reka::dependency::moleFraction;
    module.attr("needs_molarity") = reka::dependency::molarity;
    module.attr("needs_activity") = reka::dependency::activity;
    module.attr("needs_temperature") = reka::dependency::temperature;
    module.attr("needs_pressure") = reka::dependency::pressure;
    module.attr("needs_fugacity") = reka::dependency::fugacity;
    module.def("load_file", &LoadFile);
    module.def("load_block", &LoadBlock);
    module.def("user_templates_path", &UserTemplatesPath);
    py::class_<CGridPackage, Package>(module, "Package")
        .def_property_readonly("name", [](const CGridPackage& package) { return Text(package.Definition().name); })
        .def_property_readonly("description",
                               [](const CGridPackage& package) { return Text(package.Definition().description); })
        .def_property_readonly(
            "thermo_version",
            [](const CGridPackage& package) {
                return reka::Utf8FromUtf16(reka::WordOf(package.Definition().thermoVersion, reka::thermoVersionWords));
            })
        .def("compounds", &ListCompounds)
        .def("reactions", &ListReactions)
        .def("block", &BlockOf)
        .def("check", &Check)
        .def("dependencies", &DependenciesOf)
        .def("calculate", &Calculate);
}
