// SPDX-License-Identifier: MIT
// A simulator's stream in memory, which records its calls and fails as it is told.

#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "support/CountedFake.h"

namespace reka::test {

class CFakeStream : public IStream {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_ISequentialStream || iid == IID_IStream ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references.Remove(); }

    /// Answers `shortResult` where fewer bytes are left than asked for.
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* sizeRead) override {
        if (log.Record("Read " + std::to_string(size))) return log.failCode;
        const std::size_t part = std::min<std::size_t>(size, bytes.size() - position);
        if (part > 0) std::memcpy(buffer, bytes.data() + position, part);
        position += part;
        if (sizeRead) *sizeRead = static_cast<ULONG>(part);
        return part == size ? S_OK : shortResult;
    }
    HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* sizeWritten) override {
        if (log.Record("Write " + std::to_string(size))) return log.failCode;
        const auto* const first = static_cast<const std::uint8_t*>(data);
        bytes.insert(bytes.end(), first, first + size);
        if (sizeWritten) *sizeWritten = size;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return Refuse("Seek"); }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return Refuse("SetSize"); }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return Refuse("CopyTo");
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return Refuse("Commit"); }
    HRESULT STDMETHODCALLTYPE Revert() override { return Refuse("Revert"); }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return Refuse("Lock"); }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return Refuse("Unlock"); }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return Refuse("Stat"); }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return Refuse("Clone"); }

    CReferences references;
    CallLog log;
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;  // of the next read
    HRESULT shortResult = S_FALSE;

private:
    HRESULT Refuse(const char* call) {
        log.Record(call);
        return E_NOTIMPL;
    }
};

}  // namespace reka::test
