#include "tvx/platform/window.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace tvx::platform {
namespace {

TEST(WindowHandle, IsTheProcessNumberTimes512AndACounter) {
  EXPECT_EQ(number_of(first_window_handle(5000)), 2'560'000);
  EXPECT_EQ(number_of(first_window_handle(4'194'303)), 2'147'483'136);
}

TEST(WindowHandle, HasSevenDigitsInEachProcess) {
  for (std::int64_t process = 1; process < 40'000; ++process) {
    ASSERT_GE(number_of(first_window_handle(process)), 1'000'000) << process;
  }
}

TEST(WindowHandle, DiffersForEachControl) {
  const WindowHandle first = next_window_handle();
  const WindowHandle second = next_window_handle();
  EXPECT_NE(first, second);
  EXPECT_EQ(number_of(first) / 512, number_of(first_window_handle(getpid())) / 512);
}

TEST(WindowHandle, StaysWithinTheProcess) {
  const std::int32_t first = number_of(first_window_handle(getpid()));
  for (int i = 0; i < 1000; ++i) {
    const std::int32_t handle = number_of(next_window_handle());
    ASSERT_GE(handle, first);
    ASSERT_LT(handle, first + 512);
  }
}

TEST(WindowHandle, CanBeFixed) {
  set_next_window_handle(WindowHandle{1234567});
  EXPECT_EQ(number_of(next_window_handle()), 1234567);
  EXPECT_NE(number_of(next_window_handle()), 1234567);
}

}  // namespace
}  // namespace tvx::platform
