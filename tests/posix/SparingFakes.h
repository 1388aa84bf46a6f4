// SPDX-License-Identifier: MIT
// A simulator's objects and a user whose own memory never runs out: what fails is the component's alone. Each method
// that a package or a manager calls is that of the plain fake, with its allocations left out of the count.

#pragma once

#include "support/AllocationCounter.h"
#include "support/FakeBag.h"
#include "support/FakeMaterial.h"
#include "support/FakeMessages.h"
#include "support/FakeReactionObject.h"
#include "support/FakeStream.h"

namespace reka::test {

class CSparingMaterial final : public CFakeMaterial {
public:
    using CFakeMaterial::CFakeMaterial;
    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* ids) override {
        const CSparedAllocations spared;
        return CFakeMaterial::get_ComponentIds(ids);
    }
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT ids, VARIANT* values) override {
        const CSparedAllocations spared;
        return CFakeMaterial::GetComponentConstant(props, ids, values);
    }
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT props, VARIANT phases, BSTR type) override {
        const CSparedAllocations spared;
        return CFakeMaterial::CalcProp(props, phases, type);
    }
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR phase, VARIANT ids, BSTR type, BSTR basis,
                                      VARIANT* values) override {
        const CSparedAllocations spared;
        return CFakeMaterial::GetProp(property, phase, ids, type, basis, values);
    }
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT props, BSTR phase) override {
        const CSparedAllocations spared;
        return CFakeMaterial::CalcSinglePhaseProp(props, phase);
    }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR phase, BSTR basis, VARIANT* values) override {
        const CSparedAllocations spared;
        return CFakeMaterial::GetSinglePhaseProp(property, phase, basis, values);
    }
};

class CSparingResults final : public CFakeReactionObject {
public:
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR phase, VARIANT ids, BSTR basis,
                                              VARIANT values) override {
        const CSparedAllocations spared;
        return CFakeReactionObject::SetReactionProp(property, phase, ids, basis, values);
    }
};

class CSparingBag final : public CFakeBag {
public:
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR property, VARIANT* value, IErrorLog* errors) override {
        const CSparedAllocations spared;
        return CFakeBag::Read(property, value, errors);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR property, VARIANT* value) override {
        const CSparedAllocations spared;
        return CFakeBag::Write(property, value);
    }
};

class CSparingStream final : public CFakeStream {
public:
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* sizeRead) override {
        const CSparedAllocations spared;
        return CFakeStream::Read(buffer, size, sizeRead);
    }
    HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* sizeWritten) override {
        const CSparedAllocations spared;
        return CFakeStream::Write(data, size, sizeWritten);
    }
};

class CSparingMessages final : public CFakeMessages {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override {
        const CSparedAllocations spared;
        return CFakeMessages::Show(message);
    }
};

}  // namespace reka::test
