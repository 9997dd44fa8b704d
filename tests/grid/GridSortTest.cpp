#include "grid/GridCompare.h"
#include "tests/grid/GridFixture.h"

#include <algorithm>
#include <random>

namespace {

TEST(GridCompareTest, LeadingNumbers) {
    const std::pair<const char16_t*, qint32> cases[] = {
        {u"12", 12},
        {u"9", 9},
        {u"abc", 0},
        {u"", 0},
        {u" \t42 KB", 42},
        {u"-7", -7},
        {u"+7", 7},
        {u"- 7", 0},
        {u"4:05", 4},
        {u"1,000", 1},
        {u"2147483647", 2147483647},
        {u"99999999999999999999", 2147483647},
        {u"-2147483648", -2147483648},
        {u"-99999999999999999999", -2147483648},
        {u"٣", 0},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LeadingNumber(QStringView(text)), number)
            << QString::fromUtf16(text).toStdString();
}

int Compare(GridCompare compare, const QString& first, const QString& second) {
    const auto grid = MakeGrid(2, 1);
    grid->GetCell(0, 0)->SetText(first);
    grid->GetCell(1, 0)->SetText(second);
    return compare(grid->GetCell(0, 0), grid->GetCell(1, 0), 0);
}

TEST(GridCompareTest, TextsAndNumbers) {
    EXPECT_EQ(Compare(CompareNumbers, QStringLiteral("12"), QStringLiteral("9")), 1);
    EXPECT_EQ(Compare(CompareNumbers, QStringLiteral("9"), QStringLiteral("12")), -1);
    EXPECT_EQ(Compare(CompareNumbers, QStringLiteral("abc"), QStringLiteral("def")), 0);
    EXPECT_EQ(Compare(CompareTexts, QStringLiteral("12"), QStringLiteral("9")), -1);
    EXPECT_EQ(Compare(CompareTexts, QStringLiteral("ÄB"), QStringLiteral("äb")), 0);
    EXPECT_EQ(Compare(CompareTexts, QStringLiteral("b"), QStringLiteral("A")), 1);
    EXPECT_EQ(Compare(CompareTexts, QStringLiteral("Song"), QStringLiteral("Song 2")), -1);
    // Capital and small letters beyond the 16-bit range differ in their second half.
    EXPECT_EQ(Compare(CompareTexts, QStringLiteral("\U00010400a"), QStringLiteral("\U00010428A")),
              0);
    const auto grid = MakeGrid(1, 1);
    EXPECT_EQ(CompareTexts(nullptr, grid->GetCell(0, 0), 0), 0);
    EXPECT_EQ(CompareNumbers(grid->GetCell(0, 0), nullptr, 0), 0);
}

/// A grid whose column 0 holds the numbers and column 1 the row they stood in.
std::unique_ptr<CGridCtrl> GridOf(const std::vector<int>& numbers) {
    auto grid = MakeGrid(static_cast<int>(numbers.size()) + 1, 2);
    for (size_t i = 0; i < numbers.size(); ++i) {
        grid->GetCell(static_cast<int>(i) + 1, 0)->SetText(QString::number(numbers[i]));
        grid->GetCell(static_cast<int>(i) + 1, 1)->SetData(static_cast<qint32>(i));
    }
    return grid;
}

std::vector<int> OrderOf(const CGridCtrl& grid) {
    std::vector<int> order;
    for (int row = 1; row < grid.GetRowCount(); ++row)
        order.push_back(grid.GetCell(row, 1)->GetData());
    return order;
}

TEST(GridSortTest, AgreesWithAStableSortAtAnySize) {
    std::mt19937 random(7);
    for (const int count : {0, 1, 2, 511, 512, 513, 1024, 1025, 1537, 5000}) {
        std::vector<int> numbers(count);
        std::generate(numbers.begin(), numbers.end(), [&] { return int(random() % 300) - 150; });
        for (const bool ascending : {true, false}) {
            const auto grid = GridOf(numbers);
            std::vector<int> expected(count);
            for (int i = 0; i < count; ++i)
                expected[i] = i;
            std::stable_sort(expected.begin(), expected.end(), [&](int one, int other) {
                return ascending ? numbers[one] < numbers[other] : numbers[one] > numbers[other];
            });
            EXPECT_EQ(grid->SortItems(CompareNumbers, 0, ascending), 1);
            EXPECT_EQ(OrderOf(*grid), expected) << count;
            EXPECT_EQ(TextAt(*grid, 0, 0), QStringLiteral("0/0"));
        }
    }
}

TEST(GridSortTest, SortsThePartThatIsAskedForWithItsHeights) {
    const auto grid = GridOf({5, 4, 3, 2, 1});
    grid->SetRowHeight(2, 44);
    grid->SetCompareFunction(CompareNumbers);
    EXPECT_EQ(grid->SortItems(nullptr, 0, true, 0, 2, 4), 1);
    EXPECT_EQ(OrderOf(*grid), (std::vector<int>{0, 3, 2, 1, 4}));
    EXPECT_EQ(grid->GetRowHeight(4), 44);
    EXPECT_EQ(grid->GetSortColumn(), 0);
    EXPECT_TRUE(grid->IsSortAscending());
    EXPECT_EQ(grid->SortItems(nullptr, 0, true, 0, 0, 4), 0); // the header stays
    EXPECT_EQ(grid->SortItems(nullptr, 0, true, 0, 2, 6), 0);
}

TEST(GridSortTest, TheCallersDataReachesTheCompare) {
    const auto grid = GridOf({1, 2, 3});
    const GridCompare bySign = [](const CGridCellBase* one, const CGridCellBase* other,
                                  qintptr data) {
        return CompareNumbers(one, other, 0) * static_cast<int>(data);
    };
    grid->SortItems(bySign, 0, true, -1);
    EXPECT_EQ(OrderOf(*grid), (std::vector<int>{2, 1, 0}));
}

} // namespace
