// SPDX-License-Identifier: MIT
// The reader is the component's (persistence/ReadStoredDefinition.h), so that these programs call whole what it would
// load, and damaged what it would set aside. It tells its user of corrected rates in a message box, which has no place
// in a program that only looks: whatever it shows goes nowhere here.

#include "packagetext/StoredBlock.h"

#include "persistence/ReadStoredDefinition.h"
#include "platform/UserMessages.h"
#include "text/Utf8.h"

namespace packagetext {

namespace {

/// Takes the place of the message boxes while it lives.
class CNoMessages : public reka::IUserMessages {
public:
    CNoMessages() : before(reka::ReplaceUserMessages(this)) {}
    ~CNoMessages() override { reka::ReplaceUserMessages(before); }
    CNoMessages(const CNoMessages&) = delete;
    CNoMessages& operator=(const CNoMessages&) = delete;

    reka::MessageAnswer Show(const reka::UserMessage& /*message*/) noexcept override { return reka::MessageAnswer::Ok; }

private:
    reka::IUserMessages* before;
};

}  // namespace

BlockReading TryBlock(std::span<const std::uint8_t> block) {
    const CNoMessages silence;
    reka::ReactionPackDefinition definition(nullptr);
    std::u16string errorText;
    BlockReading reading;
    reading.isReadable = reka::ReadStoredDefinition(definition, block, errorText);
    if (reading.isReadable) {
        reading.name = reka::Utf8FromUtf16(definition.name.View());
    } else {
        while (errorText.ends_with(u'\r') || errorText.ends_with(u'\n')) errorText.pop_back();
        reading.reason = reka::Utf8FromUtf16(errorText);
    }
    return reading;
}

}  // namespace packagetext
