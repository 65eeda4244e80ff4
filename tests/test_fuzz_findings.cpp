// What the fuzz targets of fuzz/ found, each kept as the input that showed
// it, so the fault stays fixed.
#include "calc/Dates.h"
#include "core/Fault.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

RuntimeFault::Number faultOf(const std::function<void()>& run)
{
    try {
        run();
    } catch (const RuntimeFault& fault) {
        return fault.number();
    }
    return RuntimeFault::Number(0);
}

}  // namespace

class FuzzFindingTest : public test::SessionTest {};

// fuzz-dates: a year at the end of the 32-bit range made the age
// subtraction overflow (undefined behaviour). Ages and spans out of range
// are now the Overflow fault of 32-bit arithmetic; every other age stays.
TEST_F(FuzzFindingTest, AgesOfYearsAtTheEndsOfTheRangeOverflowInsteadOfWrapping)
{
    QString label;
    EXPECT_EQ(faultOf([&] { calcAge(u" -2147483648", u"", label, QDate(1889, 12, 31)); }),
              RuntimeFault::Overflow);
    EXPECT_EQ(faultOf([&] { calcAge(u"-2147483648", u"2147483647", label, QDate()); }),
              RuntimeFault::Overflow);
    EXPECT_EQ(faultOf([] { yearsBetween(u"2147483647", u"-2147483648"); }), RuntimeFault::Overflow);
    // The last age that fits is still given.
    EXPECT_EQ(calcAge(u"-2147483647", u"0", label, QDate()), 2147483647);
    EXPECT_EQ(yearsBetween(u"-2147483647", u"0"), 2147483647);
    EXPECT_EQ(calcAge(u"0", u"-2147483648", label, QDate()), -2147483647 - 1);
}
