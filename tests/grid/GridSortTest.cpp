#include "grid/GridCompare.h"
#include "tests/grid/GridFixture.h"

namespace {

TEST(GridCompareTest, LeadingNumbers) {
    const std::pair<QStringView, qint32> cases[] = {{u"12", 12},
                                                    {u"abc", 0},
                                                    {u"", 0},
                                                    {u" \t42 KB", 42},
                                                    {u"-7", -7},
                                                    {u"+7", 7},
                                                    {u"- 7", 0},
                                                    {u"4:05", 4},
                                                    {u"1,000", 1},
                                                    {u"٣", 0},
                                                    {u"2147483647", 2147483647},
                                                    {u"99999999999999999999", 2147483647},
                                                    {u"-99999999999999999999", -2147483648}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LeadingNumber(text), number) << text.toString().toStdString();
}

TEST(GridCompareTest, TextsAndNumbers) {
    const struct {
        GridCompare compare;
        QString first;
        QString second;
        int order;
    } cases[] = {{CompareNumbers, QStringLiteral("12"), QStringLiteral("9"), 1},
                 {CompareNumbers, QStringLiteral("9"), QStringLiteral("12"), -1},
                 {CompareNumbers, QStringLiteral("abc"), QStringLiteral("def"), 0},
                 {CompareTexts, QStringLiteral("12"), QStringLiteral("9"), -1},
                 {CompareTexts, QStringLiteral("ÄB"), QStringLiteral("äb"), 0},
                 {CompareTexts, QStringLiteral("b"), QStringLiteral("A"), 1}};
    const auto grid = MakeGrid(2, 1);
    for (const auto& [compare, first, second, order] : cases) {
        grid->GetCell(0, 0)->SetText(first);
        grid->GetCell(1, 0)->SetText(second);
        EXPECT_EQ(compare(grid->GetCell(0, 0), grid->GetCell(1, 0), 0), order);
        EXPECT_EQ(compare(nullptr, grid->GetCell(0, 0), 0), 0);
        EXPECT_EQ(compare(grid->GetCell(0, 0), nullptr, 0), 0);
    }
}

TEST(GridSortTest, SortsThePartThatIsAskedForStablyWithItsHeights) {
    const GridCompare bySign = [](const CGridCellBase* one, const CGridCellBase* other,
                                  qintptr data) {
        return CompareNumbers(one, other, 0) * static_cast<int>(data);
    };
    const int numbers[] = {5, 3, 5, 3, 1, 5, 3};
    const struct {
        bool ascending;
        int data;
        int low;
        int high;
        std::vector<int> order; ///< of the rows, as they stood
    } cases[] = {{true, 1, -1, -1, {5, 2, 4, 7, 1, 3, 6}},
                 {false, 1, -1, -1, {1, 3, 6, 2, 4, 7, 5}},
                 {false, -1, -1, -1, {5, 2, 4, 7, 1, 3, 6}},
                 {true, 1, 2, 5, {1, 5, 2, 4, 3, 6, 7}}};
    for (const auto& [ascending, data, low, high, order] : cases) {
        const auto grid = MakeGrid(8, 2);
        for (int row = 1; row < 8; ++row) {
            grid->GetCell(row, 0)->SetText(QString::number(numbers[row - 1]));
            grid->GetCell(row, 1)->SetData(row);
        }
        grid->SetRowHeight(3, 44);
        grid->SetCompareFunction(bySign);
        EXPECT_EQ(grid->SortItems(nullptr, 0, ascending, data, low, high), 1);
        for (int row = 1; row < 8; ++row) {
            EXPECT_EQ(grid->GetCell(row, 1)->GetData(), order[row - 1]);
            EXPECT_EQ(grid->GetRowHeight(row) == 44, order[row - 1] == 3);
        }
        EXPECT_EQ(TextAt(*grid, 0, 0), QStringLiteral("0/0"));
        EXPECT_EQ(grid->GetSortColumn(), 0);
        EXPECT_EQ(grid->IsSortAscending(), ascending);
        EXPECT_EQ(grid->SortItems(nullptr, 0, true, 0, 0, 4), 0); // the header stays
        EXPECT_EQ(grid->SortItems(nullptr, 0, true, 0, 2, 8), 0);
    }
}

} // namespace
