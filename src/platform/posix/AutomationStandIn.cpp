// SPDX-License-Identifier: MIT
// The stand-in's strings, arrays and variants, over plain memory. It is as faithful as the component needs it to be, in
// the surprising points above all: the copy of a null string in a variant is an empty one, and so is what is stored of
// it in an array. Storage comes from one function that a test can replace, so that each allocation can be made to fail
// in turn, as the system's can't.

#include "platform/posix/AutomationStandIn.h"

#include <cstdlib>
#include <cstring>
#include <utility>

const IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IDispatch = {0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IErrorLog = {0x3127CA40, 0x446E, 0x11CE, {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
const IID IID_IPropertyBag = {0x55272A00, 0x42CB, 0x11CE, {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
const IID IID_IPersist = {0x0000010C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IPersistPropertyBag = {0x37D84F60, 0x42CB, 0x11CE, {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
const IID IID_ISequentialStream = {0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};
const IID IID_IStream = {0x0000000C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IPersistStream = {0x00000109, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID GUID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};

void* (*automationAllocate)(std::size_t size) = nullptr;

bool operator==(const GUID& left, const GUID& right) {
    return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

namespace {

void* Allocate(std::size_t size) {
    return automationAllocate ? automationAllocate(size) : std::malloc(size);
}

/// The length in bytes stands in front of the characters, as it does on the platform.
struct BstrHeader {
    alignas(8) std::uint32_t byteLength;
    std::uint32_t unused;
};

BstrHeader* HeaderOf(BSTR text) {
    return reinterpret_cast<BstrHeader*>(text) - 1;
}

/// Size of an array element; 0 for a type that arrays here don't hold.
ULONG ElementSize(VARTYPE elementType) {
    switch (elementType) {
        case VT_I2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_R8:
            return 8;
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return sizeof(void*);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
    }
}

std::size_t ElementCount(const SAFEARRAY& array) {
    std::size_t count = 1;
    for (USHORT i = 0; i < array.cDims; ++i) count *= (&array.rgsabound[0])[i].cElements;
    return count;
}

/// Bounds of the dimension counted from 1: they are kept with the last dimension first.
SAFEARRAYBOUND& BoundOf(SAFEARRAY& array, UINT dimension) {
    return (&array.rgsabound[0])[array.cDims - dimension];
}

/// Address of the element; null for an index outside the bounds.
char* ElementAt(SAFEARRAY& array, const LONG* indices) {
    std::size_t offset = 0;
    std::size_t stride = 1;
    for (UINT dimension = 1; dimension <= array.cDims; ++dimension) {
        const SAFEARRAYBOUND& bound = BoundOf(array, dimension);
        const std::int64_t relative = static_cast<std::int64_t>(indices[dimension - 1]) - bound.lLbound;
        if (relative < 0 || relative >= static_cast<std::int64_t>(bound.cElements)) return nullptr;
        offset += static_cast<std::size_t>(relative) * stride;
        stride *= bound.cElements;
    }
    return static_cast<char*>(array.pvData) + offset * array.cbElements;
}

BSTR CopyBstr(BSTR text) {
    return text ? SysAllocStringLen(text, SysStringLen(text)) : nullptr;
}

/// Copies one element of the given type to `target`, whose old content isn't looked at.
HRESULT CopyElement(VARTYPE elementType, ULONG size, void* target, const void* source) {
    if (elementType == VT_BSTR) {
        BSTR original = nullptr;
        std::memcpy(&original, source, sizeof original);
        BSTR copy = CopyBstr(original);
        std::memcpy(target, &copy, sizeof copy);
        return original && !copy ? E_OUTOFMEMORY : S_OK;
    }
    if (elementType == VT_VARIANT) {
        auto* variant = static_cast<VARIANT*>(target);
        VariantInit(variant);
        return VariantCopy(variant, static_cast<const VARIANT*>(source));
    }
    std::memcpy(target, source, size);
    if (elementType == VT_UNKNOWN || elementType == VT_DISPATCH) {
        IUnknown* object = nullptr;
        std::memcpy(&object, source, sizeof object);
        if (object) object->AddRef();
    }
    return S_OK;
}

void FreeElement(VARTYPE elementType, void* element) {
    if (elementType == VT_VARIANT) {
        VariantClear(static_cast<VARIANT*>(element));
        return;
    }
    void* held = nullptr;
    if (elementType == VT_BSTR || elementType == VT_UNKNOWN || elementType == VT_DISPATCH) {
        std::memcpy(&held, element, sizeof held);
    }
    if (!held) return;
    if (elementType == VT_BSTR) {
        SysFreeString(static_cast<BSTR>(held));
    } else {
        static_cast<IUnknown*>(held)->Release();
    }
}

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    const std::size_t bytes = static_cast<std::size_t>(length) * sizeof(OLECHAR);
    auto* header = static_cast<BstrHeader*>(Allocate(sizeof(BstrHeader) + bytes + sizeof(OLECHAR)));
    if (!header) return nullptr;
    header->byteLength = static_cast<std::uint32_t>(bytes);
    BSTR made = reinterpret_cast<BSTR>(header + 1);
    if (text) std::memcpy(made, text, bytes);
    made[length] = u'\0';
    return made;
}

BSTR SysAllocString(const OLECHAR* text) {
    if (!text) return nullptr;
    UINT length = 0;
    while (text[length] != u'\0') ++length;
    return SysAllocStringLen(text, length);
}

void SysFreeString(BSTR text) {
    if (text) std::free(HeaderOf(text));
}

UINT SysStringLen(BSTR text) {
    return text ? HeaderOf(text)->byteLength / static_cast<UINT>(sizeof(OLECHAR)) : 0;
}

void VariantInit(VARIANT* variant) {
    std::memset(static_cast<void*>(variant), 0, sizeof *variant);
}

HRESULT VariantClear(VARIANT* variant) {
    const VARIANT held = *variant;
    const bool isArray = (held.vt & VT_ARRAY) && !(held.vt & VT_BYREF);
    if (isArray && held.parray && held.parray->cLocks > 0) return DISP_E_ARRAYISLOCKED;
    VariantInit(variant);
    if (held.vt & VT_BYREF) return S_OK;
    if (isArray) return SafeArrayDestroy(held.parray);
    if (held.vt == VT_BSTR) SysFreeString(held.bstrVal);
    if ((held.vt == VT_UNKNOWN || held.vt == VT_DISPATCH) && held.punkVal) held.punkVal->Release();
    return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source) {
    if (destination == source) return S_OK;
    const HRESULT cleared = VariantClear(destination);
    if (FAILED(cleared)) return cleared;
    VARIANT copy = *source;
    if (copy.vt & VT_BYREF) {
        // A reference is copied as a reference.
    } else if (copy.vt & VT_ARRAY) {
        const HRESULT result = SafeArrayCopy(source->parray, &copy.parray);
        if (FAILED(result)) return result;
    } else if (copy.vt == VT_BSTR) {
        copy.bstrVal = SysAllocStringLen(source->bstrVal, SysStringLen(source->bstrVal));  // of null an empty one
        if (!copy.bstrVal) return E_OUTOFMEMORY;
    } else if ((copy.vt == VT_UNKNOWN || copy.vt == VT_DISPATCH) && copy.punkVal) {
        copy.punkVal->AddRef();
    }
    *destination = copy;
    return S_OK;
}

SAFEARRAY* SafeArrayCreate(VARTYPE elementType, UINT dimensions, SAFEARRAYBOUND* bounds) {
    const ULONG elementSize = ElementSize(elementType);
    if (elementSize == 0 || dimensions == 0 || dimensions > 0xFFFF) return nullptr;
    const std::size_t headerSize = sizeof(SAFEARRAY) + (dimensions - 1) * sizeof(SAFEARRAYBOUND);
    auto* array = static_cast<SAFEARRAY*>(Allocate(headerSize));
    if (!array) return nullptr;
    std::memset(static_cast<void*>(array), 0, headerSize);
    array->cDims = static_cast<USHORT>(dimensions);
    array->elementType = elementType;
    array->fFeatures = FADF_HAVEVARTYPE;
    if (elementType == VT_BSTR) array->fFeatures |= FADF_BSTR;
    if (elementType == VT_VARIANT) array->fFeatures |= FADF_VARIANT;
    array->cbElements = elementSize;
    for (UINT dimension = 1; dimension <= dimensions; ++dimension) BoundOf(*array, dimension) = bounds[dimension - 1];
    const std::size_t size = ElementCount(*array) * elementSize;
    array->pvData = Allocate(size > 0 ? size : 1);
    if (!array->pvData) {
        std::free(array);
        return nullptr;
    }
    std::memset(array->pvData, 0, size);
    return array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (!array) return S_OK;
    if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
    char* element = static_cast<char*>(array->pvData);
    for (std::size_t i = ElementCount(*array); i > 0; --i, element += array->cbElements) {
        FreeElement(array->elementType, element);
    }
    std::free(array->pvData);
    std::free(array);
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
    *copy = nullptr;
    if (!array) return S_OK;
    const std::size_t headerSize = sizeof(SAFEARRAY) + (array->cDims - 1U) * sizeof(SAFEARRAYBOUND);
    const std::size_t size = ElementCount(*array) * array->cbElements;
    auto* made = static_cast<SAFEARRAY*>(Allocate(headerSize));
    if (!made) return E_OUTOFMEMORY;
    std::memcpy(static_cast<void*>(made), array, headerSize);
    made->cLocks = 0;
    made->pvData = Allocate(size > 0 ? size : 1);
    if (!made->pvData) {
        std::free(made);
        return E_OUTOFMEMORY;
    }
    std::memset(made->pvData, 0, size);
    HRESULT result = S_OK;
    for (std::size_t offset = 0; offset < size && SUCCEEDED(result); offset += array->cbElements) {
        result = CopyElement(array->elementType, array->cbElements, static_cast<char*>(made->pvData) + offset,
                             static_cast<char*>(array->pvData) + offset);
    }
    if (FAILED(result)) {
        SafeArrayDestroy(made);
        return result;
    }
    *copy = made;
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) {
    return array ? array->cDims : 0;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array) {
    return array ? array->cbElements : 0;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* elementType) {
    if (!array || !elementType || !(array->fFeatures & FADF_HAVEVARTYPE)) return E_INVALIDARG;
    *elementType = array->elementType;
    return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (!array) return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    *bound = BoundOf(*array, dimension).lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (!array) return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& bounds = BoundOf(*array, dimension);
    *bound = static_cast<LONG>(static_cast<ULONG>(bounds.lLbound) + bounds.cElements - 1U);
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* element) {
    if (!array || !indices || !element) return E_INVALIDARG;
    const char* source = ElementAt(*array, indices);
    return source ? CopyElement(array->elementType, array->cbElements, element, source) : DISP_E_BADINDEX;
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* element) {
    if (!array || !indices) return E_INVALIDARG;
    char* target = ElementAt(*array, indices);
    if (!target) return DISP_E_BADINDEX;
    // A string or an interface arrives as the pointer itself, everything else by address.
    const bool byPointer =
        array->elementType == VT_BSTR || array->elementType == VT_UNKNOWN || array->elementType == VT_DISPATCH;
    if (!byPointer && !element) return E_INVALIDARG;
    FreeElement(array->elementType, target);
    std::memset(target, 0, array->cbElements);
    if (array->elementType == VT_BSTR && !element) {  // stored as an empty string, as the platform does it
        const BSTR empty = SysAllocStringLen(nullptr, 0);
        std::memcpy(target, &empty, sizeof empty);
        return empty ? S_OK : E_OUTOFMEMORY;
    }
    return CopyElement(array->elementType, array->cbElements, target, byPointer ? &element : element);
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
    if (!array) return E_INVALIDARG;
    if (array->cLocks == 0xFFFF) return E_UNEXPECTED;
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
    if (!array) return E_INVALIDARG;
    if (array->cLocks == 0) return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (!array || !data) return E_INVALIDARG;
    const HRESULT result = SafeArrayLock(array);
    if (SUCCEEDED(result)) *data = array->pvData;
    return result;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
    return SafeArrayUnlock(array);
}
