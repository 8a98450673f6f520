#include "ui/controls/event_list.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>
#include <commctrl.h>
#include <winevt.h>

#include <gtest/gtest.h>

#include "eventlog/loading/load_protocol.h"
#include "support/import_patch.h"
#include "support/test_record.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using eventlog::EventNode;
using eventlog::EventRecord;

TEST(Columns, HaveTheirTitlesAndWidths) {
    const struct {
        std::wstring title;
        int width;
    } expected[] = {{L"Level", 120},    {L"Date Time", 140},  {L"Source", 200},
                    {L"Event ID", 140}, {L"Process ID", 140}, {L"Record ID", kRestOfList}};
    ASSERT_EQ(kColumns.size(), std::size(expected));
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
        EXPECT_EQ(kColumns[i].title, expected[i].title);
        EXPECT_EQ(kColumns[i].width, expected[i].width);
    }
}

TEST(LastColumnWidth, IsTheClientWidthLess600In16Bits) {
    const struct {
        int client;
        int width;
    } cases[] = {{1000, 400}, {600, 0}, {599, -1}, {0, -600}, {33367, 32767}, {33368, -32768}};
    for (const auto& [client, width] : cases) {
        EXPECT_EQ(LastColumnWidth(client), width) << client;
    }
}

TEST(LevelImage, IsLeftToTheControlForLevelsWithoutOne) {
    const struct {
        int level;
        std::optional<int> image;
    } cases[] = {{0, 0},  {1, {}}, {2, 2}, {3, 1},  {4, 0},
                 {5, {}}, {6, 3},  {7, 4}, {8, {}}, {255, {}}};
    for (const auto& [level, image] : cases) {
        EXPECT_EQ(LevelImage(static_cast<std::uint8_t>(level)), image) << level;
    }
}

// A window that has only rows and a node.
class EventListNotifications : public testing::Test {
protected:
    EventListNotifications() {
        window_.currentNode = node_;
        window_.shownNode = node_;
        AppendPage(*node_, {test::MakeRecord({.recordId = 18446744073709551615u,
                                              .eventId = 4625,
                                              .process = 4294967295,
                                              .level = 7,
                                              .time = {2024, 3, 5, 7, 9, 3},
                                              .provider = L"Acme-Print-Spooler",
                                              .source = L"Spooler"})});
        AddRecord(2);
        AddRecord(5);
        window_.rows.TakeBatch(*node_);
        window_.rows.AppendMatching(L"");
    }

    void AddRecord(std::uint8_t level) { AppendPage(*node_, {test::MakeRecord({.level = level})}); }

    LRESULT Notify(void* notification) {
        return OnEventListNotify(window_, *static_cast<NMHDR*>(notification));
    }

    std::wstring CellText(int row, int column, int capacity) {
        std::vector<wchar_t> buffer(static_cast<std::size_t>(capacity) + 1, L'#');
        NMLVDISPINFOW info{};
        info.hdr.code = LVN_GETDISPINFOW;
        info.item.mask = LVIF_TEXT;
        info.item.iItem = row;
        info.item.iSubItem = column;
        info.item.pszText = buffer.data();
        info.item.cchTextMax = capacity;
        EXPECT_EQ(Notify(&info), 0);
        EXPECT_EQ(buffer.back(), L'#') << "must not write beyond the buffer";
        return buffer[0] == L'#' ? L"untouched" : buffer.data();
    }

    int Image(int row, int before) {
        NMLVDISPINFOW info{};
        info.hdr.code = LVN_GETDISPINFOW;
        info.item.mask = LVIF_IMAGE;
        info.item.iItem = row;
        info.item.iImage = before;
        Notify(&info);
        return info.item.iImage;
    }

    NMLVCUSTOMDRAW DrawItem(DWORD_PTR row) {
        NMLVCUSTOMDRAW draw{};
        draw.nmcd.hdr.code = NM_CUSTOMDRAW;
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = row;
        draw.clrText = 0x123456;
        draw.clrTextBk = 0x654321;
        return draw;
    }

    void HintUpTo(int lastRow) {
        NMLVCACHEHINT hint{};
        hint.hdr.code = LVN_ODCACHEHINT;
        hint.iTo = lastRow;
        EXPECT_EQ(Notify(&hint), 0);
    }

    MainWindow window_{nullptr};
    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006);
};

TEST_F(EventListNotifications, GiveTheTextOfEachCell) {
    const wchar_t* const cells[] = {L"Audit Failure", L"05/03/2024 07:09:03", L"Spooler", L"4625",
                                    L"4294967295",    L"18446744073709551615"};
    for (int column = 0; column < kColumnCount; ++column) {
        EXPECT_EQ(CellText(0, column, 260), cells[column]);
    }
}

TEST_F(EventListNotifications, CutATextToTheBuffer) {
    EXPECT_EQ(CellText(0, 0, 14), L"Audit Failure");
    EXPECT_EQ(CellText(0, 0, 13), L"Audit Failur");
    EXPECT_EQ(CellText(0, 0, 1), L"");
}

TEST_F(EventListNotifications, GiveNothingForRowsAndColumnsThatAreNotThere) {
    EXPECT_EQ(CellText(3, 0, 260), L"untouched");
    EXPECT_EQ(CellText(-1, 0, 260), L"untouched");
    EXPECT_EQ(CellText(0, 6, 260), L"untouched");
    EXPECT_EQ(Image(3, 77), 77);
}

TEST_F(EventListNotifications, GiveTheImageOfTheLevelOrLeaveItAlone) {
    EXPECT_EQ(Image(0, 77), 4);
    EXPECT_EQ(Image(1, 77), 2);
    EXPECT_EQ(Image(2, 77), 77);
}

TEST_F(EventListNotifications, RequestANotificationForEachDrawnItem) {
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.hdr.code = NM_CUSTOMDRAW;
    draw.nmcd.dwDrawStage = CDDS_PREPAINT;

    EXPECT_EQ(Notify(&draw), CDRF_NOTIFYITEMDRAW);
}

TEST_F(EventListNotifications, DrawErrorsBlackOnLightRed) {
    NMLVCUSTOMDRAW draw = DrawItem(1);

    EXPECT_EQ(Notify(&draw), CDRF_NEWFONT);
    EXPECT_EQ(draw.clrText, 0u);
    EXPECT_EQ(draw.clrTextBk, 0xDCDCFFu);
}

TEST_F(EventListNotifications, DrawOtherRowsAsTheControlDoes) {
    for (const DWORD_PTR row : {0u, 2u, 3u}) {
        NMLVCUSTOMDRAW draw = DrawItem(row);

        EXPECT_EQ(Notify(&draw), CDRF_DODEFAULT) << row;
        EXPECT_EQ(draw.clrText, 0x123456u);
        EXPECT_EQ(draw.clrTextBk, 0x654321u);
    }
}

TEST_F(EventListNotifications, ExtendTheLoadWhenTheRowsEndIsNear) {
    node_->loadedCount = 10112;

    HintUpTo(0);  // with fewer than 2,000 rows every hint is near the end

    EXPECT_EQ(node_->loadLimit, 20112u);
}

TEST_F(EventListNotifications, ExtendNothingFarFromTheEnd) {
    for (int i = 0; i < 12000 - 3; ++i) {
        AddRecord(4);
    }
    window_.rows.TakeBatch(*node_);
    window_.rows.AppendMatching(L"");
    ASSERT_EQ(window_.rows.RowCount(), 12000u);
    node_->loadedCount = 12000;

    HintUpTo(9999);
    EXPECT_EQ(node_->loadLimit, 10000u);

    HintUpTo(10000);
    EXPECT_EQ(node_->loadLimit, 22000u);
}

TEST_F(EventListNotifications, ExtendNothingForAFolderOrWithoutANode) {
    const auto folder = std::make_shared<EventNode>(L"Windows Logs", L"Windows-Logs", 0x041);
    folder->loadedCount = 5000;
    window_.currentNode = folder;
    HintUpTo(0);
    EXPECT_EQ(folder->loadLimit, 10000u);

    window_.currentNode = nullptr;
    HintUpTo(0);
    EXPECT_EQ(node_->loadLimit, 10000u);
}

int g_fetches = 0;

EVT_HANDLE WINAPI RefuseBookmark(LPCWSTR) {
    ++g_fetches;
    return nullptr;
}

TEST_F(EventListNotifications, FetchTheEventOfARowThatBecomesSelected) {
    const test::ImportPatch<decltype(EvtCreateBookmark)> patch("EvtCreateBookmark", RefuseBookmark);
    const struct {
        int row;
        UINT changed;
        UINT before;
        UINT after;
        int fetches;
    } cases[] = {
        {0, LVIF_STATE, 0, LVIS_SELECTED, 1},
        {0, LVIF_STATE, LVIS_FOCUSED, LVIS_FOCUSED | LVIS_SELECTED, 1},
        {0, LVIF_STATE, LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED, 0},
        {0, LVIF_STATE, LVIS_SELECTED, 0, 0},
        {0, LVIF_TEXT, 0, LVIS_SELECTED, 0},
        {-1, LVIF_STATE, 0, LVIS_SELECTED, 0},
    };
    for (const auto& [row, changed, before, after, fetches] : cases) {
        NMLISTVIEW notification{};
        notification.hdr.code = LVN_ITEMCHANGED;
        notification.iItem = row;
        notification.uChanged = changed;
        notification.uOldState = before;
        notification.uNewState = after;
        g_fetches = 0;
        EXPECT_EQ(Notify(&notification), 0);
        EXPECT_EQ(g_fetches, fetches) << row << ", " << before << " to " << after;
    }
}

TEST_F(EventListNotifications, OfOtherKindsReturnZero) {
    for (const UINT code :
         {LVN_COLUMNCLICK, LVN_ODSTATECHANGED, NM_CLICK, NM_DBLCLK, LVN_KEYDOWN}) {
        NMLISTVIEW notification{};
        notification.hdr.code = code;
        EXPECT_EQ(Notify(&notification), 0);
    }
}

}  // namespace
}  // namespace tavrin::ui
