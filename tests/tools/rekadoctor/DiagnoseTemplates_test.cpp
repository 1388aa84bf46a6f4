// SPDX-License-Identifier: MIT
// The files of templates, and what a program would make of them.

#include "DiagnoseTemplates.h"

#include <gtest/gtest.h>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

const std::string userFile = CFakeComputer::userFile;
const std::string shippedFile = CFakeComputer::shippedFile;

struct TemplatesCase {
    const char* name;
    std::function<void(CFakeComputer&)> change;
    std::vector<std::string> findings;  // with marks: + good, ! wrong, - listed; nothing for a note
    std::vector<Step> advice;
};

const std::vector<Step> salvage = {
    {"Close all simulators, and get back what is whole, in a command prompt:",
     {"move \"" + userFile + "\" \"" + userFile + ".damaged\"",
      "\"C:\\REKA\\x64\\rekatool.exe\" salvage \"" + userFile + ".damaged\" -o \"" + userFile + "\""}}};

std::vector<std::uint8_t> Cut(std::vector<std::uint8_t> bytes, std::size_t size) {
    bytes.resize(size);
    return bytes;
}

/// A template as a newer version of the component might store it, behind a good one.
std::vector<std::uint8_t> NewerFile() {
    const reka::test::CStoredBytes good = StoredTemplate(u"A");
    const reka::test::CStoredBytes newer = StoredTemplate(u"B").U32(1);
    reka::test::CStoredBytes file;
    file.U32(2);
    for (const auto& block : {good, newer}) file.U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block);
    return file.bytes;
}

const TemplatesCase templatesCases[] = {
    {"AllWell",
     [](CFakeComputer&) {},
     {"+this user's file " + userFile + " holds 2 templates", "-Ammonia synthesis", "-Water-gas shift"},
     {}},
    {"OneTemplate",
     [](CFakeComputer& computer) { computer.files[userFile] = TemplateFile({u"A"}); },
     {"+this user's file " + userFile + " holds 1 template", "-A"},
     {}},
    {"NoTemplate",
     [](CFakeComputer& computer) { computer.files[userFile] = TemplateFile({}); },
     {"this user's file " + userFile + " holds no template: make one in the manager's dialog"},
     {}},
    {"CountBelowZero",
     [](CFakeComputer& computer) {
         computer.files[userFile] = {0xFF, 0xFF, 0xFF, 0xFF};
     },
     {"this user's file " + userFile + " holds no template: make one in the manager's dialog"},
     {}},
    {"NewUser",
     [](CFakeComputer& computer) { computer.files.erase(userFile); },
     {"+this user has no file of templates yet: a program makes it, as a copy of " + shippedFile +
          ", which holds 1 template",
      "-Shipped"},
     {}},
    {"NewUserWithoutShippedFile",
     [](CFakeComputer& computer) {
         computer.files.erase(userFile);
         computer.files.erase(shippedFile);
     },
     {"this user has no file of templates, and " + shippedFile + " isn't there: the list is empty"},
     {}},
    {"NewUserWithDamagedShippedFile",
     [](CFakeComputer& computer) {
         computer.files.erase(userFile);
         computer.files[shippedFile] = Cut(TemplateFile({u"A"}), 20);
     },
     {"!this user has no file of templates yet: a program makes it, as a copy of " + shippedFile +
      ", which is damaged: template 1: read error / unexpected end of file"},
     {{"Install REKA anew, or unpack its package anew.", {}}}},
    {"NewUserWithoutRights",
     [](CFakeComputer& computer) {
         computer.files.erase(userFile);
         computer.unreadable.insert(shippedFile);
     },
     {"!this user has no file of templates yet: a program makes it, as a copy of " + shippedFile +
      ", which can't be opened: Access is denied."},
     {{"Give this user the right to read that file, or close what has it open.", {}}}},
    {"NewUserWithoutComponent",
     [](CFakeComputer& computer) {
         computer.files.erase(userFile);
         computer.trial = {TrialEnd::NotCreated, "no", ""};
     },
     {"this user has no file of templates yet: a program makes it, as a copy of the shipped one"},
     {}},
    {"CutInCount",
     [](CFakeComputer& computer) {
         computer.files[userFile] = {1, 0};
     },
     {"!this user's file " + userFile +
      " is damaged: read error / unexpected end of file; the next program sets it "
      "aside as " +
      userFile + ".backup, and shows no template"},
     salvage},
    {"CutInTemplate",
     [](CFakeComputer& computer) {
         computer.files[userFile] = Cut(TemplateFile({u"A", u"B"}), 60);
     },
     {"!this user's file " + userFile +
      " is damaged: template 2: read error / unexpected end of file; the next program "
      "sets it aside as " +
      userFile + ".backup, and shows no template"},
     salvage},
    {"BadTemplate",
     [](CFakeComputer& computer) { computer.files[userFile][8] = 99; },  // the length of the first name
     {"!this user's file " + userFile + " is damaged: template 1: data corrupted; the next program sets it aside as " +
      userFile + ".backup, and shows no template"},
     salvage},
    {"NewerTemplate",
     [](CFakeComputer& computer) { computer.files[userFile] = NewerFile(); },
     {"!this user's file " + userFile +
      " is damaged: template 2: unexpected data at the end of the stored reaction package data: reaction pack data may "
      "have been saved with newer version; the next program sets it aside as " +
      userFile + ".backup, and shows no template"},
     {{"If a newer REKA has written it, install that one here, too. Otherwise:", {}}, salvage[0]}},
    {"NoRights",
     [](CFakeComputer& computer) { computer.unreadable.insert(userFile); },
     {"!programs show no template and store none: this user's file " + userFile +
      " can't be opened: Access is denied."},
     {{"Close the programs that have it open, or give this user the right to read and write it.", {}}}},
    {"NewerShippedFile",
     [](CFakeComputer& computer) {
         computer.times[userFile] = 1;
         computer.times[shippedFile] = 2;
     },
     {"the shipped file " + shippedFile +
          " is newer than this user's: programs ask whether it may take its place. Yes keeps this user's as a backup, "
          "No "
          "changes nothing",
      "+this user's file " + userFile + " holds 2 templates", "-Ammonia synthesis", "-Water-gas shift"},
     {}},
    {"ShippedFileOfTheSameTime",
     [](CFakeComputer& computer) { computer.times[userFile] = computer.times[shippedFile] = 2; },
     {"+this user's file " + userFile + " holds 2 templates", "-Ammonia synthesis", "-Water-gas shift"},
     {}},
    {"NoUserFolder",
     [](CFakeComputer& computer) { computer.userFolder = ""; },
     {"+this user's file " + shippedFile + " holds 1 template", "-Shipped"},
     {}},
    {"NoFolderAtAll",
     [](CFakeComputer& computer) {
         computer.userFolder = "";
         computer.trial = {TrialEnd::NotCreated, "no", ""};
     },
     {"nobody knows where they lie: the system doesn't tell the folder of this user's application data"},
     {}},
};

class Templates : public testing::TestWithParam<TemplatesCase> {};

TEST_P(Templates, AreToldAsAProgramMeetsThem) {
    CFakeComputer computer;
    computer.MakeAllWell();
    GetParam().change(computer);
    const Diagnosis diagnosis = DiagnoseAll(computer);
    const Section& section = diagnosis.sections[5];
    EXPECT_EQ(section.title, "The templates of this user");
    std::vector<std::string> findings;
    for (const Finding& finding : section.findings) {
        const char* const marks[] = {"+", "", "!", "-"};  // in the order of Weight
        findings.push_back(marks[static_cast<std::size_t>(finding.weight)] + finding.text);
    }
    EXPECT_EQ(findings, GetParam().findings);
    EXPECT_EQ(section.advice, GetParam().advice);
}
INSTANTIATE_TEST_SUITE_P(Table, Templates, testing::ValuesIn(templatesCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekadoctor
