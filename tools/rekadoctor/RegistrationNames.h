// SPDX-License-Identifier: MIT
// What a right registration of the component says: its names, identifiers and categories, as texts of the registry.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace rekadoctor {

constexpr std::string_view classId = "{95E42661-1916-4261-8FCC-6F598A19E544}";
constexpr std::string_view typeLibraryId = "{6F471C15-E012-496B-9563-5EFD98C25862}";
constexpr std::string_view progId = "NAVO_REKA.ReactionPackManager.1";
constexpr std::string_view versionIndependentProgId = "NAVO_REKA.ReactionPackManager";
constexpr std::string_view threadingModel = "Apartment";
constexpr std::string_view moduleName = "REKA.dll";

/// What a simulator calls first of the standard's interfaces: of the manager, of all components, of the packages.
constexpr std::array<std::string_view, 4> calledInterfaces = {
    "{678C0AFC-0100-11D2-A67D-00105A42887F}", "{678C0A9B-0100-11D2-A67D-00105A42887F}",
    "{678C0AFB-0100-11D2-A67D-00105A42887F}", "{678C0AF9-0100-11D2-A67D-00105A42887F}"};

/// A category of the CAPE-OPEN standard under which the component is registered.
struct Category {
    std::string_view id;
    std::string_view meaning;      // what it says of a component
    std::string_view consequence;  // what happens without it
};

constexpr std::size_t categoryCount = 5;
constexpr std::array<Category, categoryCount> categories = {{
    {"{678C09A1-7D66-11D2-A67D-00105A42887F}", "CAPE-OPEN component",
     "a simulator that goes through all CAPE-OPEN components passes it over"},
    {"{678C09AA-0100-11D2-A67D-00105A42887F}", "reaction package manager",
     "a simulator does not find it when it looks for reaction packages"},
    {"{4150C28A-EE06-403f-A871-87AFEC38A249}", "user of the simulator's thermodynamics",
     "a simulator may keep its materials from it"},
    {"{0D562DC8-EA8E-4210-AB39-B66513C0CD09}", "thermo version 1.0",
     "a simulator whose materials have thermo version 1.0 may leave it out"},
    {"{4667023A-5A8E-4CCA-AB6D-9D78C5112FED}", "thermo version 1.1",
     "a simulator whose materials have thermo version 1.1 may leave it out"},
}};

}  // namespace rekadoctor
