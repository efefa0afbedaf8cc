#include "host/natural_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace host {
namespace {

TEST(NaturalOrder, CountsDigitsAsNumbers) {
  const std::vector<std::string> in_order = {"",
                                             "a",
                                             "a1",
                                             "a01b",
                                             "a1c",
                                             "a2",
                                             "A10",
                                             "a10b2",
                                             "a10b10",
                                             "a99",
                                             "a100",
                                             "a18446744073709551616",
                                             "a18446744073709551617",
                                             "b",
                                             "\xc3\xa9"
                                             "1"};
  for (std::size_t i = 0; i < in_order.size(); ++i)
    for (std::size_t j = 0; j < in_order.size(); ++j)
      EXPECT_EQ(NaturallyBefore(in_order[i], in_order[j]), i < j) << in_order[i] << " and " << in_order[j];
}

}  // namespace
}  // namespace host
