/// Tests whose windows live on the offscreen platform.
#pragma once

#include "gui/qt/gui_start.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tvw::gui {

class OffscreenTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        const Status started = startGui();
        ASSERT_TRUE(started) << started.reason();
    }
};

} // namespace tvw::gui
