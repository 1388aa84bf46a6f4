// SPDX-License-Identifier: MIT
// What is found, in plain words, and what to do about it.

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

/// Who hears of a diagnosis while it is made.
class CListener {
public:
    virtual ~CListener() = default;
    /// Something is going to be looked at or tried, which may take its time.
    virtual void Begin(const std::string& title) = 0;
    virtual void End(const Section& section) = 0;
};

/// Looks at everything, tries to load and to create, and says what is well and what isn't, section by section.
Diagnosis Diagnose(CComputer& computer, const Examination& examined, CListener& listener);

/// "64-bit" or "32-bit".
std::string WordOf(Width width);

}  // namespace rekadoctor
