// SPDX-License-Identifier: MIT
// Which way messages go in this process.

#include "platform/UserMessages.h"

#include "platform/Seam.h"

namespace reka {

namespace {

CSeam<IUserMessages> seam;

}  // namespace

IUserMessages& UserMessages() {
    return seam.Or(SystemMessageBoxes());
}

IUserMessages* ReplaceUserMessages(IUserMessages* other) {
    return seam.Replace(other);
}

}  // namespace reka
