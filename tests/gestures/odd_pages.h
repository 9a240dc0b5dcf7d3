#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Pages as people and programs have written them in thirty years: ends left out, tags crossed, blocks in
/// fonts, comments anywhere. Each word ("w7") stands once in its page.
namespace tvx::gestures::test {

struct OddPage {
  std::string name, bytes;
};

/// Those that were written down, and as many more that are made of the same habits at random; the same ones
/// each time.
std::vector<OddPage> odd_pages(std::size_t made);

}  // namespace tvx::gestures::test
