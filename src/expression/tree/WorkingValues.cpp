// SPDX-License-Identifier: MIT
// The four arrays lie in one block, so that a definition in service has one allocation for them. A stamp is a number
// that no other state of any object ever has: whoever keeps addresses of the values compares one number to know that
// they still hold.

#include "expression/tree/WorkingValues.h"

#include <atomic>

namespace reka {

namespace {

std::atomic<std::uint64_t> lastWorkStamp = 0;

}  // namespace

WorkingValues::WorkingValues() : workStamp(++lastWorkStamp) {}

void WorkingValues::AllocateArrays(std::size_t size) {
    ReleaseWorkArrays();
    workBlock = std::make_unique<double[]>(4 * size);
    molarity.values = workBlock.get();
    activity.values = molarity.values + size;
    fugacity.values = activity.values + size;
    moleFraction.values = fugacity.values + size;
    workArraySize = size;
}

void WorkingValues::ReleaseWorkArrays() {
    RenewWorkStamp();
    workArraySize = 0;
    for (CWorkArray* array : {&molarity, &activity, &fugacity, &moleFraction}) array->values = nullptr;
    workBlock.reset();
}

void WorkingValues::RenewWorkStamp() {
    workStamp = ++lastWorkStamp;
}

}  // namespace reka
