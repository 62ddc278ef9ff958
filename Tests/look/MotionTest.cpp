#include "look/motion/Motion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace orvu {
namespace {

/// Springs of all three kinds with random starts and ends.
std::vector<std::pair<Spring, SpringMotion>> randomMotions() {
    std::mt19937 chance{17};
    std::uniform_real_distribution<double> place{-500, 500};
    std::uniform_real_distribution<double> response{0.1, 1};
    std::uniform_real_distribution<double> damping{0.2, 2.5};
    std::vector<std::pair<Spring, SpringMotion>> motions;
    for (int i = 0; i < 300; ++i) {
        const Spring spring{Seconds{response(chance)}, i % 5 == 0 ? 1 : damping(chance)};
        motions.emplace_back(
            spring, SpringMotion{spring, {place(chance), place(chance) * 10}, place(chance)});
    }
    for (const Spring spring : {Motion::snappy, Motion::open, Motion::bouncy}) {
        motions.emplace_back(spring, SpringMotion{spring, {0, 0}, 1});
    }
    return motions;
}

TEST(MotionTest, StiffnessAndFrictionFollowFromResponseAndDamping) {
    const Spring spring{Seconds{0.5}, 0.25};

    EXPECT_NEAR(spring.stiffness(), 157.9136704, 1e-6);
    EXPECT_NEAR(spring.friction(), 6.2831853, 1e-6);
}

TEST(MotionTest, AMotionBeginsAtItsStart) {
    for (const Spring spring :
         {Spring{Seconds{0.3}, 0.5}, Spring{Seconds{0.3}, 1}, Spring{Seconds{0.3}, 1.7}}) {
        const SpringMotion motion{spring, {30, -40}, 100};

        EXPECT_NEAR(motion.at(Seconds{0}).position, 30, 1e-9);
        EXPECT_NEAR(motion.at(Seconds{0}).velocity, -40, 1e-9);
        EXPECT_NEAR(motion.at(Seconds{-5}).position, 30, 1e-9);
    }
}

TEST(MotionTest, AMotionStaysAtItsEndOnceItHasSettled) {
    constexpr double epsilon = 0.01;
    for (const auto& [spring, motion] : randomMotions()) {
        const Seconds settled = motion.settlesAfter(epsilon);
        for (double later = 0; later < 3; later += 0.01) {
            const double position = motion.at(settled + Seconds{later}).position;
            ASSERT_NEAR(position, motion.end(), epsilon * 1.0001) << spring.damping;
        }
    }
}

TEST(MotionTest, AMotionIsNotCalledSettledLongBeforeItIs) {
    for (const auto& [spring, motion] : randomMotions()) {
        const Seconds settled = motion.settlesAfter(0.01);
        // Within one swing before, it was still outside.
        double farthest = 0;
        for (double back = 0; back < spring.response.count() * 3; back += 0.001) {
            const auto state = motion.at(settled - Seconds{back});
            farthest = std::max(farthest, std::abs(state.position - motion.end()));
        }
        ASSERT_GT(farthest, 0.01) << spring.damping;
    }
}

TEST(MotionTest, TheVelocityIsThePositionsChange) {
    constexpr double step = 1e-6;
    for (const auto& [spring, motion] : randomMotions()) {
        for (double t = 0.001; t < 1; t += 0.05) {
            const double before = motion.at(Seconds{t - step}).position;
            const double after = motion.at(Seconds{t + step}).position;
            const double velocity = motion.at(Seconds{t}).velocity;
            ASSERT_NEAR((after - before) / (2 * step), velocity, 0.1 + std::abs(velocity) * 1e-5)
                << spring.damping;
        }
    }
}

TEST(MotionTest, TheForceIsThatOfSpringAndFriction) {
    constexpr double step = 1e-6;
    for (const auto& [spring, motion] : randomMotions()) {
        for (double t = 0.001; t < 1; t += 0.05) {
            const auto [position, velocity] = motion.at(Seconds{t});
            const double force =
                -spring.stiffness() * (position - motion.end()) - spring.friction() * velocity;
            const double change =
                motion.at(Seconds{t + step}).velocity - motion.at(Seconds{t - step}).velocity;
            ASSERT_NEAR(change / (2 * step), force, 10 + std::abs(force) * 1e-4);
        }
    }
}

TEST(MotionTest, EnergyNeverGrows) {
    for (const auto& [spring, motion] : randomMotions()) {
        const auto energy = [&](double t) {
            const auto [position, velocity] = motion.at(Seconds{t});
            const double distance = position - motion.end();
            return (velocity * velocity + spring.stiffness() * distance * distance) / 2;
        };
        double last = energy(0);
        for (double t = 0.005; t < 2; t += 0.005) {
            const double now = energy(t);
            ASSERT_LE(now, last * (1 + 1e-9) + 1e-9) << spring.damping << " at " << t;
            last = now;
        }
    }
}

TEST(MotionTest, ARetargetedMotionKeepsPositionAndVelocity) {
    for (const auto& [spring, motion] : randomMotions()) {
        const SpringState state = motion.at(Seconds{0.13});

        const SpringMotion next{spring, state, -77};

        EXPECT_NEAR(next.at(Seconds{0}).position, state.position, 1e-6);
        EXPECT_NEAR(next.at(Seconds{0}).velocity, state.velocity, 1e-6);
        EXPECT_EQ(next.end(), -77);
    }
}

TEST(MotionTest, NearTheCriticalDampingThereIsNoJump) {
    const SpringMotion critical{{Seconds{0.4}, 1}, {0, 300}, 50};
    for (const double damping : {0.99999, 0.9999999, 1.0000001, 1.00001}) {
        const SpringMotion near{{Seconds{0.4}, damping}, {0, 300}, 50};
        for (double t = 0; t < 1; t += 0.01) {
            ASSERT_NEAR(near.at(Seconds{t}).position, critical.at(Seconds{t}).position, 0.01);
        }
    }
}

TEST(MotionTest, OnlyASpringWithLittleDampingSwingsBeyondItsEnd) {
    const auto highest = [](double damping) {
        const SpringMotion motion{{Seconds{0.4}, damping}, {0, 0}, 1};
        double result = 0;
        for (double t = 0; t < 3; t += 0.001) {
            result = std::max(result, motion.at(Seconds{t}).position);
        }
        return result;
    };

    // exp(-pi * z / sqrt(1 - z * z)) beyond the end.
    EXPECT_NEAR(highest(0.55), 1.1263, 1e-4);
    EXPECT_NEAR(highest(0.72), 1.0384, 1e-4);
    EXPECT_LE(highest(1), 1);
    EXPECT_LE(highest(2), 1);
}

TEST(MotionTest, AMotionThatIsThereHasSettled) {
    EXPECT_EQ(SpringMotion(Motion::open, {5, 0}, 5).settlesAfter(0.001), Seconds{0});
}

TEST(MotionTest, TheMotionsOfTheWindowTakeLessThanASecond) {
    for (const Spring spring : {Motion::snappy, Motion::open, Motion::bouncy}) {
        const Seconds settled = SpringMotion{spring, {0, 0}, 1}.settlesAfter(0.001);
        EXPECT_GT(settled, Seconds{0.3});
        EXPECT_LT(settled, Seconds{1});
    }
}

}  // namespace
}  // namespace orvu
