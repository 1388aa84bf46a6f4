// SPDX-License-Identifier: MIT
// A small stand-in for the automation types where the system has none, so that the objects and the order of their
// checks run natively under the sanitizers. Names, layouts, values and the rules of ownership follow the platform's;
// only what the component uses is here.

#pragma once

#include <cstddef>
#include <cstdint>

// NOLINTBEGIN(readability-identifier-naming): the names are the platform's

using HRESULT = std::int32_t;
using SCODE = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using BOOL = int;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using OLECHAR = char16_t;
using BSTR = OLECHAR*;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;

#define STDMETHODCALLTYPE
#define STDMETHODIMP HRESULT
#define STDMETHODIMP_(type) type

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001U);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003U);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFFU);
constexpr HRESULT E_ACCESSDENIED = static_cast<HRESULT>(0x80070005U);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000EU);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057U);
constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110U);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001U);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003U);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004U);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006U);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008U);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009U);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000BU);
constexpr HRESULT DISP_E_ARRAYISLOCKED = static_cast<HRESULT>(0x8002000DU);

constexpr DISPID DISPID_UNKNOWN = -1;

constexpr bool SUCCEEDED(HRESULT result) {
    return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
    return result < 0;
}

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;

bool operator==(const GUID& left, const GUID& right);
inline bool operator!=(const GUID& left, const GUID& right) {
    return !(left == right);
}

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_TYPEMASK = 0x0FFF,
};

// The root of all interfaces -----------------------------------------------------------------------------------------

class IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct VARIANT;
struct SAFEARRAY;
class ITypeInfo;

struct DISPPARAMS {
    VARIANT* rgvarg;
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO {
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    DWORD dwHelpContext;
    void* pvReserved;
    HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
    SCODE scode;
};

class IDispatch : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                                    DISPID* identifiers) = 0;
    virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                             VARIANT* result, EXCEPINFO* exception, UINT* badArgument) = 0;
};

// Strings, arrays, variants ------------------------------------------------------------------------------------------

/// A fresh string of `length` characters, copied from `text` (uninitialised if that is null) and ended by a zero. The
/// caller frees it. Null without memory.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// The same for a text that ends at its first zero; null for a null text.
BSTR SysAllocString(const OLECHAR* text);
void SysFreeString(BSTR text);
/// Length in characters, 0 for an absent string.
UINT SysStringLen(BSTR text);

struct SAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};

constexpr USHORT FADF_HAVEVARTYPE = 0x0080;
constexpr USHORT FADF_BSTR = 0x0100;
constexpr USHORT FADF_VARIANT = 0x0800;

struct SAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    VARTYPE elementType;
    ULONG cbElements;
    ULONG cLocks;
    void* pvData;
    SAFEARRAYBOUND rgsabound[1];  // as many as dimensions, the last dimension first
};

struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        std::int16_t iVal;
        LONG lVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        BSTR* pbstrVal;
        double* pdblVal;
        SAFEARRAY** pparray;
        VARIANT* pvarVal;
        void* byref;
    };
};

void VariantInit(VARIANT* variant);
/// Frees what the variant holds and makes it empty. What a VT_BYREF variant refers to stays its owner's, and a locked
/// array stays where it is.
HRESULT VariantClear(VARIANT* variant);
/// Clears `destination` and makes it a deep copy of `source`.
HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);

/// An array of `dimensions` dimensions with zeroed elements; null without memory or for an element type not known.
SAFEARRAY* SafeArrayCreate(VARTYPE elementType, UINT dimensions, SAFEARRAYBOUND* bounds);
/// Fails with `DISP_E_ARRAYISLOCKED` while the array is locked.
HRESULT SafeArrayDestroy(SAFEARRAY* array);
HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
UINT SafeArrayGetDim(SAFEARRAY* array);
UINT SafeArrayGetElemsize(SAFEARRAY* array);
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* elementType);
/// Bounds of the given dimension, counted from 1.
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// Copies an element out: the caller owns the copy. `indices` holds one index per dimension, the first dimension first.
HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* element);
/// Copies an element in; a string is passed as the BSTR itself, everything else by address.
HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* element);
/// Locks are counted.
HRESULT SafeArrayLock(SAFEARRAY* array);
HRESULT SafeArrayUnlock(SAFEARRAY* array);
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

// Persistence --------------------------------------------------------------------------------------------------------

class IErrorLog : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR property, EXCEPINFO* exception) = 0;
};

class IPropertyBag : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Read(LPCOLESTR property, VARIANT* value, IErrorLog* errorLog) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(LPCOLESTR property, VARIANT* value) = 0;
};

class IPersist : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetClassID(CLSID* classId) = 0;
};

class IPersistPropertyBag : public IPersist {
public:
    virtual HRESULT STDMETHODCALLTYPE InitNew() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* errorLog) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAllProperties) = 0;
};

union LARGE_INTEGER {
    std::int64_t QuadPart;
};
union ULARGE_INTEGER {
    std::uint64_t QuadPart;
};
struct STATSTG;

class ISequentialStream : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* sizeRead) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* sizeWritten) = 0;
};

class IStream : public ISequentialStream {
public:
    virtual HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER distance, DWORD origin, ULARGE_INTEGER* position) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* sizeRead,
                                             ULARGE_INTEGER* sizeWritten) = 0;
    virtual HRESULT STDMETHODCALLTYPE Commit(DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Revert() = 0;
    virtual HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) = 0;
    virtual HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IStream** clone) = 0;
};

class IPersistStream : public IPersist {
public:
    virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(IStream* stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) = 0;
};

extern const IID IID_IUnknown;
extern const IID IID_IDispatch;
extern const IID IID_IErrorLog;
extern const IID IID_IPropertyBag;
extern const IID IID_IPersist;
extern const IID IID_IPersistPropertyBag;
extern const IID IID_ISequentialStream;
extern const IID IID_IStream;
extern const IID IID_IPersistStream;
extern const IID GUID_NULL;
#define IID_NULL GUID_NULL

/// Where strings and arrays get their memory. A test puts a function here that fails when it is told to; null stands
/// for malloc.
extern void* (*automationAllocate)(std::size_t size);

// NOLINTEND(readability-identifier-naming)
