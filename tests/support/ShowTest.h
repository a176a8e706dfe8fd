#pragma once

#include "KavoriTest.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"

namespace kavori::test {

// A test of a slide show: the settings at their defaults and no show in memory, before and
// after.
class ShowTest : public KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetShow();
    }
    void TearDown() override
    {
        ResetShow();
        KavoriTest::TearDown();
    }
};

} // namespace kavori::test
