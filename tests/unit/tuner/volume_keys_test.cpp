// The volume by keys: positions of the slider, and the volume that follows them.
#include "tuner/volume_keys.h"

#include "skin/skin_access.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VolumeKeys : public TunerTest {
  protected:
    int Position() const { return GetSliderPos(state->m_skin, SKIN_VOLUME); }
    int Range() const { return GetSliderMax(state->m_skin, SKIN_VOLUME); }
    std::string VolumeAt(int position) const {
        return "SetVolume " + std::to_string(position * 100 / Range());
    }
};

TEST_F(VolumeKeys, AStepMovesTheSliderAndSetsTheVolume) {
    ASSERT_GT(Range(), 40);
    SetSliderPos(state->m_skin, SKIN_VOLUME, 20);
    StepVolume(window, *state, -5);
    EXPECT_EQ(Position(), 15);
    StepVolume(window, *state, 5);
    StepVolume(window, *state, 5);
    EXPECT_EQ(Position(), 25);
    EXPECT_THAT(device.Calls(), ElementsAre(VolumeAt(15), VolumeAt(20), VolumeAt(25)));
}

TEST_F(VolumeKeys, DownFromPosition3GoesTo0) {
    SetSliderPos(state->m_skin, SKIN_VOLUME, 3);
    StepVolume(window, *state, -5);
    EXPECT_EQ(Position(), 0);
    EXPECT_THAT(device.Calls(), ElementsAre("SetVolume 0"));
}

TEST_F(VolumeKeys, UpNearTheMaximumGoesToTheMaximumAndToVolume100) {
    SetSliderPos(state->m_skin, SKIN_VOLUME, Range() - 2);
    StepVolume(window, *state, 5);
    EXPECT_EQ(Position(), Range());
    EXPECT_THAT(device.Calls(), ElementsAre("SetVolume 100"));
}

TEST_F(VolumeKeys, TheEndsAreSetAgainWhenTheSliderStandsThere) {
    SetSliderPos(state->m_skin, SKIN_VOLUME, 0);
    StepVolume(window, *state, -5);
    EXPECT_EQ(Position(), 0);
    EXPECT_THAT(device.Calls(), ElementsAre("SetVolume 0"));
}

}  // namespace
