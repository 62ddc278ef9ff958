#include "site/permissions/CaptureSign.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

constexpr ActiveCapture camera{.camera = true};
constexpr ActiveCapture microphone{.microphone = true};

TEST(CaptureSignTest, TheSignNamesWhatIsOnAndWhatAPressDoes) {
    EXPECT_EQ(CaptureSign::of(camera),
              (CaptureSign{"Camera in use. Stop", "Camera in use: click to stop", "Stop Camera"}));
    EXPECT_EQ(CaptureSign::of(microphone),
              (CaptureSign{"Microphone in use. Stop", "Microphone in use: click to stop",
                           "Stop Microphone"}));
    EXPECT_EQ(
        CaptureSign::of(camera | microphone),
        (CaptureSign{"Camera and microphone in use. Stop",
                     "Camera and microphone in use: click to stop", "Stop Camera and Microphone"}));
}

TEST(CaptureSignTest, WhereNothingIsOnNothingIsSaid) {
    EXPECT_EQ(CaptureSign::of({}), CaptureSign{});
    EXPECT_FALSE(ActiveCapture{}.any());
}

TEST(CaptureSignTest, WhatIsOnInOneOrTheOtherIsOnInBoth) {
    EXPECT_EQ(camera | ActiveCapture{}, camera);
    EXPECT_EQ(ActiveCapture{} | microphone, microphone);
    EXPECT_TRUE((camera | microphone).has(CaptureKind::camera));
    EXPECT_TRUE((camera | microphone).has(CaptureKind::microphone));
    EXPECT_FALSE(camera.has(CaptureKind::microphone));
}

}  // namespace
}  // namespace orvu
