#include "painter/wiggle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>
#include <thread>
#include <vector>

#include "painter/noise.h"
#include "painter/thread_team.h"
#include "painter/wiggle_kernel.h"

namespace painter {
namespace {

struct Picture {
  explicit Picture(PlaneShape new_shape, std::uint8_t fill = 0)
      : shape(new_shape), red(shape.Samples(), fill), green(red), blue(red) {}
  ConstPlanes View() const { return {shape, red.data(), green.data(), blue.data()}; }
  Planes Write() { return {shape, red.data(), green.data(), blue.data()}; }
  bool operator==(const Picture&) const = default;

  PlaneShape shape;
  std::vector<std::uint8_t> red, green, blue;
};

Picture Speckled(PlaneShape shape) {
  Picture picture(shape);
  std::mt19937 random(7);
  for (auto* plane : {&picture.red, &picture.green, &picture.blue})
    for (auto& sample : *plane) sample = static_cast<std::uint8_t>(random());
  return picture;
}

/// The rule, pixel by pixel.
void Displace(int amount, int size, const Slices& slices, const Picture& source, Picture& target) {
  const int right = source.shape.right, bottom = source.shape.bottom;
  for (int y = 0; y < bottom; ++y)
    for (int x = 0; x < right; ++x) {
      const float across = static_cast<float>(x / 50.0 / size), down = static_cast<float>(y / 50.0 / size);
      const float x_vector[3] = {across, down, slices.x}, y_vector[3] = {across, down, slices.y};
      const double move_x = std::nearbyint(static_cast<double>(amount) * noise3(x_vector) + x);
      const double move_y = std::nearbyint(static_cast<double>(amount) * noise3(y_vector) + y);
      const auto from_x = static_cast<std::size_t>(std::clamp(move_x, 0.0, right - 1.0));
      const auto from_y = static_cast<std::size_t>(std::clamp(move_y, 0.0, bottom - 1.0));
      const std::size_t from = from_y * source.shape.Columns() + from_x;
      const std::size_t to =
          static_cast<std::size_t>(y) * source.shape.Columns() + static_cast<std::size_t>(x);
      target.red[to] = source.red[from];
      target.green[to] = source.green[from];
      target.blue[to] = source.blue[from];
    }
}

TEST(Wiggle, EqualsTheRuleBitForBit) {
  struct Case {
    int width, height, amount, size;
    Slices slices;
  };
  const Case cases[] = {
      {640, 480, 16, 4, {0.3f, 0.7f}},      {701, 333, 32, 1, {0.01f, 0.99f}},
      {600, 450, -400, 1, {0.5f, 0.1f}},    {200, 200, 0, 20, {0, 0.125f}},
      {1, 1, 16, 4, {0.3f, 0.7f}},          {16, 2, 32, 1, {0.9f, 0.2f}},
      {17, 33, 32, 1, {1.25f, 2.7f}},       {65, 64, 400, 1, {0.6f, 0.4f}},
      {60, 60, INT32_MAX, 1, {0.6f, 0.4f}}, {90, 60, INT32_MIN, 1, {0.6f, 0.4f}},
      {70, 50, 16, 0, {0.3f, 0.7f}},
  };
  const WiggleKernel* kernels[3];
  const std::size_t count = KernelsThatRun(kernels, 3);
  EXPECT_EQ(&KernelHere(), kernels[count - 1]);
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << " amount " << c.amount);
    const Picture source = Speckled({c.width, c.height});
    Picture expected(source.shape, 99);
    Displace(c.amount, std::max(c.size, 1), c.slices, source, expected);
    for (std::size_t i = 0; i < count; ++i)
      for (const int threads : {1, 3}) {
        Picture target(source.shape, 99);
        WiggleFrameAt(c.amount, c.size, c.slices, source.View(), target.Write(), {kernels[i], threads});
        EXPECT_TRUE(target == expected) << "kernel " << i << ", " << threads << " threads";
      }
  }
}

// Each stays until all have come.
TEST(ThreadTeam, WorksTogether) {
  for (int round = 0; round < 3; ++round) {
    std::atomic<int> come{0};
    OnThreads(3, [&come] {
      for (++come; come < 3;) std::this_thread::yield();
    });
    EXPECT_EQ(come, 3);
  }
}

}  // namespace
}  // namespace painter
