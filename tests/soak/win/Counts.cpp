// SPDX-License-Identifier: MIT
// Kernel handles stand in the system's list of all handles, blocks in the heaps' own walk, objects of drawing in the
// table that the process's environment block leads to. Windows, menus and icons have no such table that can be read:
// each number that one can have is tried.

#include "soak/win/Counts.h"

#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <cstring>

namespace soak {

namespace {

/// An entry of the system's list of handles.
struct SystemHandle {
    void* object;
    ULONG_PTR process;
    ULONG_PTR value;
    ULONG access;
    USHORT creator;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
};
struct SystemHandles {
    ULONG_PTR count;
    ULONG_PTR reserved;
    SystemHandle handles[1];
};
constexpr ULONG systemHandleList = 64;  // which the enumeration of the declared call lacks
using QueryList = LONG(WINAPI*)(ULONG which, void* list, ULONG size, ULONG* needed);
constexpr LONG lengthMismatch = static_cast<LONG>(0xC0000004);

double CountKernelHandles() {
    const auto query = reinterpret_cast<QueryList>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<ULONG_PTR> list(1 << 14);
    ULONG needed = 0;
    LONG status = 0;
    do {
        list.resize(list.size() * 2);
        status = query(systemHandleList, list.data(), static_cast<ULONG>(list.size() * sizeof(list[0])), &needed);
    } while (status == lengthMismatch);
    if (status != 0) return -1;
    const auto* const found = reinterpret_cast<const SystemHandles*>(list.data());
    double own = 0;
    for (ULONG_PTR i = 0; i < found->count; ++i) {
        if (found->handles[i].process == GetCurrentProcessId()) ++own;
    }
    return own;
}

/// What of the address space is this process's own and has memory behind it.
double CountPrivateBytes() {
    double bytes = 0;
    MEMORY_BASIC_INFORMATION region = {};
    for (const char* place = nullptr; VirtualQuery(place, &region, sizeof region) != 0;
         place = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += static_cast<double>(region.RegionSize);
    }
    return bytes;
}

/// An entry of the table of drawing objects, as 64-bit processes have it.
struct DrawingObject {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type;  // 0: free
    std::uint8_t flags;
    std::uint64_t userPointer;
};
constexpr std::size_t drawingTableSize = 0x4000;
constexpr std::size_t drawingTablePlace = sizeof(void*) == 8 ? 0xF8 : 0x94;  // in the environment block

double CountDrawingObjects() {
    if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return told;
    PROCESS_BASIC_INFORMATION basic = {};
    if (NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0) {
        return -1;
    }
    const DrawingObject* table = nullptr;
    std::memcpy(&table, reinterpret_cast<const char*>(basic.PebBaseAddress) + drawingTablePlace, sizeof table);
    if (!table) return -1;
    double used = 0;
    for (std::size_t i = 0; i < drawingTableSize; ++i) {
        if (table[i].type != 0) ++used;
    }
    return used;
}

struct UserObjects {
    double windows = 0;
    double menus = 0;
    double icons = 0;  // and cursors
};

bool IsIcon(HICON icon) {
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info)) return false;
    if (info.hbmMask) DeleteObject(info.hbmMask);
    if (info.hbmColor) DeleteObject(info.hbmColor);
    return true;
}

UserObjects CountUserObjects() {
    UserObjects counts;
    for (std::uintptr_t number = 0x20; number < 0xFFF0; number += 2) {
        DWORD process = 0;
        if (GetWindowThreadProcessId(reinterpret_cast<HWND>(number), &process)) {
            if (process == GetCurrentProcessId()) ++counts.windows;
        } else if (IsMenu(reinterpret_cast<HMENU>(number))) {
            ++counts.menus;
        } else if (IsIcon(reinterpret_cast<HICON>(number))) {
            ++counts.icons;
        }
    }
    return counts;
}

}  // namespace

HeapCounts CountHeap() {
    HANDLE heaps[64] = {};
    const DWORD count = GetProcessHeaps(64, heaps);
    HeapCounts counts;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
            ++counts.blocks;
            counts.bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return counts;
}

std::vector<Quantity> CountedQuantities() {
    return {{"private bytes", 1 << 20}, {"heap bytes", 16 << 10}, {"heap blocks", 50}, {"kernel handles", 2},
            {"drawing objects", 20},    {"windows", 0},           {"menus", 0},        {"icons and cursors", 2}};
}

std::vector<double> ReadCounts() {
    const double handles = CountKernelHandles();
    const double drawing = CountDrawingObjects();
    const UserObjects user = CountUserObjects();
    const HeapCounts heap = CountHeap();
    return {CountPrivateBytes(), heap.bytes, heap.blocks, handles, drawing, user.windows, user.menus, user.icons};
}

}  // namespace soak
