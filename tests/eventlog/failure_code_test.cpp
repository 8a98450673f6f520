#include "eventlog/service/failure_code.h"

#include <ios>
#include <new>
#include <stdexcept>
#include <system_error>

#include <gtest/gtest.h>

namespace tavrin::eventlog {
namespace {

TEST(FailureCode, IsTheLastErrorOrAnInternalErrorWithoutOne) {
    EXPECT_EQ(FailureCode(5), 5u);
    EXPECT_EQ(FailureCode(0), 1359u);
}

TEST(FailureCode, OfAnExceptionDependsOnItsType) {
    EXPECT_EQ(FailureCodeOf(std::bad_alloc()), 8u);
    EXPECT_EQ(FailureCodeOf(std::ios_base::failure("a string stream")), 8u);
    EXPECT_EQ(FailureCodeOf(std::system_error(
                  std::make_error_code(std::errc::resource_unavailable_try_again))),
              164u);
    EXPECT_EQ(FailureCodeOf(std::runtime_error("any")), 1359u);
}

}  // namespace
}  // namespace tavrin::eventlog
