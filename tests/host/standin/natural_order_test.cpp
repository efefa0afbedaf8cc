#include "host/standin/natural_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace host {
namespace {

TEST(NaturalOrder, CountsDigitsAsNumbers) {
  const std::string longest = "a1844674407370955161";  // with one more digit beyond 64 bits
  const std::vector<std::string> in_order = {"",      "a1",     "a01b", "a1c",  "a2",          "A10",
                                             "a10b2", "a10b10", "a99",  "a100", longest + "6", longest + "7",
                                             "b",     "\u00e9"};
  for (std::size_t i = 0; i < in_order.size(); ++i)
    for (std::size_t j = 0; j < in_order.size(); ++j)
      EXPECT_EQ(NaturallyBefore(in_order[i], in_order[j]), i < j) << in_order[i] << " and " << in_order[j];
}

}  // namespace
}  // namespace host
