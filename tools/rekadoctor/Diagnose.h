// SPDX-License-Identifier: MIT
// What was found, in plain words, and what to do about it.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Examine.h"

namespace rekadoctor {

enum class Weight : std::uint8_t { Good, Note, Wrong, Listed };

/// One sentence or half-sentence on one thing; `Listed` belongs to the one before.
struct Finding {
    Weight weight;
    std::string text;
};

/// Something to do, with commands to paste.
struct Step {
    std::string text;
    std::vector<std::string> commands;

    bool operator==(const Step&) const = default;
};

/// Findings on one matter and the steps that put right what is wrong among them.
struct Section {
    std::string title;
    Width width;
    std::vector<Finding> findings;
    std::vector<Step> advice;

    void Good(std::string text) { findings.push_back({Weight::Good, std::move(text)}); }
    void Note(std::string text) { findings.push_back({Weight::Note, std::move(text)}); }
    void Wrong(std::string text) { findings.push_back({Weight::Wrong, std::move(text)}); }
    /// A step that several findings lead to is listed once.
    void Advise(std::string text, std::vector<std::string> commands = {});
};

struct Diagnosis {
    std::vector<Section> sections;
    int wrongForOwnWidth = 0;
    int wrongForOtherWidth = 0;
};

Diagnosis Diagnose(const Examination& examination);

/// "64-bit" or "32-bit".
std::string WordOf(Width width);

}  // namespace rekadoctor
