// SPDX-License-Identifier: MIT
// A property bag that answers with whatever the bytes say; BagAnswers.h has their form. The bag and its log count the
// references on them, of which none may be kept when the reading is done.

#include <cstdlib>
#include <span>
#include <string>

#include "BagAnswers.h"
#include "ByteVariants.h"
#include "QuietMessages.h"
#include "persistence/ByteReader.h"
#include "persistence/ReadBag.h"

namespace {

using reka::fuzz::BagAnswer;

/// A host's object that nobody may keep.
template <class Interface>
class CLentObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++held; }
    ULONG STDMETHODCALLTYPE Release() override { return --held; }
    bool IsHeld() const { return held != 0; }

private:
    ULONG held = 0;
};

class CFuzzedBag : public CLentObject<IPropertyBag> {
public:
    explicit CFuzzedBag(reka::CByteReader& bytes) : reader(bytes), values(bytes) {}

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
        VariantInit(value);
        std::uint8_t kind = 0;
        if (!reader.ReadU8(kind)) return E_FAIL;
        switch (static_cast<BagAnswer>(kind % reka::fuzz::bagAnswerCount)) {
            case BagAnswer::Fails:
                return E_FAIL;
            case BagAnswer::Empty:
                return S_OK;
            case BagAnswer::Integer:
                value->vt = VT_I4;
                return S_OK;
            case BagAnswer::Text:
                value->bstrVal = values.Text().Detach();
                value->vt = VT_BSTR;
                return S_OK;
            case BagAnswer::Texts:
                return values.Texts(*value, 1);
            case BagAnswer::Numbers:
                return values.Numbers(*value, VT_R8);
            case BagAnswer::TextsOfTwoDimensions:
                return values.Texts(*value, 2);
            case BagAnswer::NumbersSaidToBeTexts:
                return values.Numbers(*value, VT_BSTR);
        }
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return E_FAIL; }

private:
    reka::CByteReader& reader;
    reka::fuzz::CByteVariants values;
};

/// Reads what it is told to the last character, and keeps it until it goes away.
class CFuzzedErrorLog : public CLentObject<IErrorLog> {
public:
    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR property, EXCEPINFO* exception) override {
        const std::u16string_view key = reinterpret_cast<const char16_t*>(property);
        const std::u16string description = reka::StringFromBstr(exception->bstrDescription);
        if (key.empty() || description.empty() || reka::StringFromBstr(exception->bstrSource) != u"fuzz") std::abort();
        told += description;
        return S_OK;
    }

private:
    std::u16string told;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    reka::CByteReader reader(std::span(bytes, size));
    std::uint8_t hasErrorLog = 0;
    reader.ReadU8(hasErrorLog);
    CFuzzedBag bag(reader);
    CFuzzedErrorLog errorLog;
    reka::ReactionPackDefinition definition(nullptr);
    const reka::BagReader bagReader = {&bag, (hasErrorLog & 1) != 0 ? &errorLog : nullptr, u"fuzz"};
    if (reka::ReadDefinitionFromBag(definition, bagReader)) reka::fuzz::UseDefinition(definition);
    if (bag.IsHeld() || errorLog.IsHeld()) std::abort();
    return 0;
}
