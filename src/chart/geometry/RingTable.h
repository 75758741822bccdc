#pragma once

#include <array>

namespace veltrano {

/// The most rings the chart shows.
inline constexpr int kMaxSubLevels = 13;

/// Radii as fractions of the chart's full radius. Row n is used while n rings are shown: column 0 is the
/// central disc, column L the outer edge of ring L; columns beyond n are unused and 0. The values are drawn,
/// not computed: rings get narrower towards the outside. Row 0 serves while no ring is shown.
inline constexpr std::array<std::array<float, kMaxSubLevels + 1>, kMaxSubLevels + 1> g_aRingBounds{{
    // clang-format off
    {0.5f, 1.0f},
    {0.5f, 1.0f},
    {0.5f, 0.8f, 1.0f},
    {0.4f, 0.65f, 0.85f, 1.0f},
    {0.3f, 0.49f, 0.67f, 0.84f, 1.0f},
    {0.25f, 0.42f, 0.58f, 0.73f, 0.87f, 1.0f},
    {0.2f, 0.3583333f, 0.5066667f, 0.645f, 0.7733333f, 0.8916667f, 1.0f},
    {0.2f, 0.3442857f, 0.4785714f, 0.6028572f, 0.7171429f, 0.8214286f, 0.9157143f, 1.0f},
    {0.2f, 0.335f, 0.46f, 0.575f, 0.68f, 0.775f, 0.86f, 0.935f, 1.0f},
    {0.2f, 0.3288889f, 0.4477778f, 0.5566667f, 0.6555555f, 0.7444444f, 0.8233333f, 0.8922222f, 0.9511111f, 1.0f},
    {0.2f, 0.325f, 0.44f, 0.545f, 0.64f, 0.725f, 0.8f, 0.865f, 0.92f, 0.965f, 1.0f},
    {0.2f, 0.3227273f, 0.4354545f, 0.5381818f, 0.6309091f, 0.7136363f, 0.7863637f, 0.8490909f, 0.9018182f, 0.9445454f, 0.9772727f, 1.0f},
    {0.2f, 0.3216667f, 0.4333333f, 0.535f, 0.6266667f, 0.7083333f, 0.78f, 0.8416666f, 0.8933333f, 0.935f, 0.9666666f, 0.9883333f, 1.0f},
    {0.2f, 0.3215384f, 0.4330769f, 0.5346154f, 0.6261538f, 0.7076923f, 0.7792308f, 0.8407692f, 0.8923077f, 0.9338462f, 0.9653846f, 0.976923f, 0.9884616f, 1.0f},
    // clang-format on
}};

/// The shortest arc that is drawn, in points along a ring's outer edge. The one threshold of the chart.
inline constexpr double kMinSectorArc = 3.0;

} // namespace veltrano
