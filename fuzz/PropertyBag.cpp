// A property bag that answers with whatever the bytes say.

#include <fuzzer/FuzzedDataProvider.h>

#include "QuietMessages.h"
#include "capeopen/ArrayHelpers.h"
#include "persistence/PropertyBagForm.h"
#include "platform/CodePage.h"

namespace {

class CFuzzedBag : public IPropertyBag {
public:
    explicit CFuzzedBag(FuzzedDataProvider& source) : data(source) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
        VariantInit(value);
        switch (data.ConsumeIntegralInRange(0, 9)) {
            case 0:
                return E_FAIL;
            case 1:
                return S_OK;  // empty
            case 2:
                value->vt = VT_I4;
                return S_OK;
            case 3:
            case 4:
                value->vt = VT_BSTR;
                value->bstrVal = Text().Detach();
                return S_OK;
            case 5:
            case 6:
                return Numbers(*value);
            default:
                return Texts(*value);
        }
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return E_FAIL; }

private:
    reka::CBstr Text() {
        static constexpr const char16_t* words[] = {u"Kinetic", u"Equilibrium", u"Homogeneous", u"Fugacity", u"1.1"};
        const int choice = data.ConsumeIntegralInRange(0, 7);
        if (choice == 0) return {};
        if (choice <= 5) return reka::CBstr::Make(words[choice - 1]);
        return reka::CBstr::Make(reka::WideText(data.ConsumeRandomLengthString(40)));
    }
    SAFEARRAY* Array(VARTYPE type, ULONG& count) {
        count = data.ConsumeIntegralInRange<ULONG>(0, 4);
        SAFEARRAYBOUND bounds[2] = {{count, data.ConsumeIntegralInRange<LONG>(-2, 2)}, {1, 0}};
        return SafeArrayCreate(type, data.ConsumeIntegralInRange(0, 15) == 0 ? 2 : 1, bounds);
    }
    HRESULT Texts(VARIANT& value) {
        ULONG count = 0;
        value.parray = Array(VT_BSTR, count);
        value.vt = VT_ARRAY | VT_BSTR;
        for (ULONG i = 0; i < count; ++i) {
            static_cast<BSTR*>(value.parray->pvData)[i] = Text().Detach();
        }
        return S_OK;
    }
    HRESULT Numbers(VARIANT& value) {
        ULONG count = 0;
        value.parray = Array(VT_R8, count);
        value.vt = VT_ARRAY | VT_R8;
        for (ULONG i = 0; i < count; ++i) {
            static_cast<double*>(value.parray->pvData)[i] = data.ConsumeFloatingPoint<double>();
        }
        return S_OK;
    }

    FuzzedDataProvider& data;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    CFuzzedBag bag(data);
    reka::ReactionPackDefinition definition(nullptr);
    if (reka::ReadDefinitionFromBag(definition, reka::BagReader{&bag, nullptr, u"fuzz"})) {
        reka::fuzz::UseDefinition(definition);
    }
    return 0;
}
