#include <gtest/gtest.h>

#include "tests/editor/HostedEffect.h"

/// Whatever the host does in the middle of a gesture, it is told of as many ends as beginnings.
TEST(Gestures, GetTheirEndsWhenTheHostClosesTheEditorAtTheirBeginning)
{
    HostedEffect hosted;
    std::vector<Point> places;
    for (const UI::Native::WindowBase *const control : hosted.controls())
        places.push_back(HostedEffect::centre(*control));
    for (int32_t x = 84; x < 460; x += 4) places.push_back({x, 80}); // the crossover's lines among them
    int32_t begun = 0, total = 0;
    hosted.host.onCall = [&](int32_t opcode) {
        if (opcode == audioMasterEndEdit) --begun;
        if (opcode != audioMasterBeginEdit) return;
        ++begun;
        ++total;
        hosted.close();
    };
    for (const Point place : places) {
        if (!hosted.isOpen()) hosted.open();
        hosted.desk->drag(place, place + Point{2, 9});
        EXPECT_EQ(begun, 0) << place.x << ", " << place.y;
    }
    EXPECT_GT(total, 30) << "each value and each line";
    hosted.host.onCall = nullptr;
}
