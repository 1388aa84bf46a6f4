// Starts the tests as the module starts itself: with the common controls and the rich edit control.

#include <gtest/gtest.h>
#include <windows.h>

#include "capeopen/win/Module.h"

int main(int argc, char** argv) {
    SetProcessDPIAware();  // otherwise the system stretches pictures of 96 dots per inch
    testing::InitGoogleTest(&argc, argv);
    reka::StartModule(GetModuleHandleW(nullptr));
    const int result = RUN_ALL_TESTS();
    reka::EndModule(false);
    return result;
}
