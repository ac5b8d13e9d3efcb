// The popup's placement, size steps and keys.

#include "core/bookmarks/BookmarkKeyTable.h"
#include "core/bookmarks/BookmarkPopupGeometry.h"
#include "core/bookmarks/BookmarkPopupScale.h"

#include <QTest>

using namespace deskmark;
namespace Geometry = deskmark::BookmarkPopupGeometry;
using Corner = BookmarkAnchor::Corner;
using Kind = BookmarkKeyCommand::Kind;

Q_DECLARE_METATYPE(std::optional<ScreenInfo>)
Q_DECLARE_METATYPE(std::optional<BookmarkAnchor>)
Q_DECLARE_METATYPE(std::optional<double>)
Q_DECLARE_METATYPE(BookmarkKeyCommand)

namespace {
// The right one of two 1280 × 800 monitors, with a 30 px panel along its top.
const ScreenInfo kRight{"RIGHT", {1280, 0, 1280, 800}, {1280, 30, 1280, 770}};
const ScreenInfo kSmall{"SMALL", {0, 0, 600, 400}, {0, 0, 600, 400}};

std::optional<BookmarkAnchor> topLeft(double x, double y) {
    return BookmarkAnchor{Corner::TopLeft, {x, y}};
}
std::optional<BookmarkAnchor> bottomLeft(double x, double y) {
    return BookmarkAnchor{Corner::BottomLeft, {x, y}};
}
} // namespace

class BookmarkPopupRulesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anchor_data() {
        QTest::addColumn<std::optional<ScreenInfo>>("screen");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QPointF>("mouse");
        QTest::addColumn<std::optional<BookmarkAnchor>>("expected");
        QTest::newRow("below and right of the mouse")
            << std::optional(kRight) << 1.0 << QPointF(1400, 100) << topLeft(1408, 108);
        QTest::newRow("held inside the right edge")
            << std::optional(kRight) << 1.0 << QPointF(2500, 100) << topLeft(1840, 108);
        QTest::newRow("never above the visible top")
            << std::optional(kRight) << 1.0 << QPointF(1400, 5) << topLeft(1408, 30);
        QTest::newRow("upward when the mouse is near the bottom")
            << std::optional(kRight) << 1.0 << QPointF(1400, 341) << bottomLeft(1408, 792);
        QTest::newRow("460 above the bottom still opens downward")
            << std::optional(kRight) << 1.0 << QPointF(1400, 340) << topLeft(1408, 348);
        QTest::newRow("the upward band grows with the scale")
            << std::optional(kRight) << 1.5 << QPointF(1300, 200) << bottomLeft(1308, 792);
        QTest::newRow("mouse on another screen: above the centre")
            << std::optional(kRight) << 1.0 << QPointF(100, 100) << topLeft(1560, 215);
        QTest::newRow("a narrow screen: the width is the screen less 16")
            << std::optional(kSmall) << 1.0 << QPointF(300, 10) << bottomLeft(16, 392);
        QTest::newRow("no screen") << std::optional<ScreenInfo>() << 1.0 << QPointF(1, 1)
                                   << std::optional<BookmarkAnchor>();
    }
    void anchor() {
        QFETCH(std::optional<ScreenInfo>, screen);
        QFETCH(double, scale);
        QFETCH(QPointF, mouse);
        QFETCH(std::optional<BookmarkAnchor>, expected);
        QCOMPARE(Geometry::bookmarkAnchor(screen, scale, mouse), expected);
    }

    void maxListHeight_data() {
        QTest::addColumn<std::optional<ScreenInfo>>("screen");
        QTest::addColumn<std::optional<BookmarkAnchor>>("anchor");
        QTest::addColumn<QPointF>("mouse");
        QTest::addColumn<bool>("hints");
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("expected");
        QTest::newRow("top-left anchor: room below it less the hints")
            << std::optional(kRight) << topLeft(1300, 100) << QPointF() << true << 1.0
            << 800.0 - 100 - 195;
        QTest::newRow("without hints less is kept back")
            << std::optional(kRight) << topLeft(1300, 100) << QPointF() << false << 1.0
            << 800.0 - 100 - 85;
        QTest::newRow("high anchor: the screen's height bounds it")
            << std::optional(kRight) << topLeft(1300, 0) << QPointF() << false << 1.0
            << 770.0 - 85;
        QTest::newRow("bottom-left anchor: room above it")
            << std::optional(kRight) << bottomLeft(1300, 792) << QPointF() << false << 1.0
            << 792.0 - 30 - 85;
        QTest::newRow("no anchor: room below the mouse")
            << std::optional(kRight) << std::optional<BookmarkAnchor>() << QPointF(1300, 300)
            << false << 1.0 << 800.0 - 300 - 85;
        QTest::newRow("never less than 240 × scale")
            << std::optional(kSmall) << topLeft(10, 300) << QPointF() << true << 1.2 << 288.0;
        QTest::newRow("no screen: 320 × scale") << std::optional<ScreenInfo>()
                                                << std::optional<BookmarkAnchor>() << QPointF()
                                                << true << 1.5 << 480.0;
    }
    void maxListHeight() {
        QFETCH(std::optional<ScreenInfo>, screen);
        QFETCH(std::optional<BookmarkAnchor>, anchor);
        QFETCH(QPointF, mouse);
        QFETCH(bool, hints);
        QFETCH(double, scale);
        QFETCH(double, expected);
        QCOMPARE(Geometry::maxListHeight(screen, anchor, mouse, hints, scale), expected);
    }

    void listHeightCountsRowsAndHeaders() {
        QCOMPARE(Geometry::listHeight(3, 1, 1.0, true, true, 1000), 3 * 44.0 + 26 + 8);
        QCOMPARE(Geometry::listHeight(3, 1, 1.2, true, false, 1000), (3 * 30.0 + 26 + 8) * 1.2);
        QCOMPARE(Geometry::listHeight(100, 4, 1.0, true, true, 400), 400.0);
    }

    void keepInsideScreen() {
        const QRectF visible = kRight.visibleFrame;
        QCOMPARE(Geometry::keepInsideScreen({2000, 600, 720, 300}, visible),
                 QRectF(1840, 500, 720, 300));
        QCOMPARE(Geometry::keepInsideScreen({1200, 0, 100, 100}, visible),
                 QRectF(1280, 30, 100, 100));
        QCOMPARE(Geometry::keepInsideScreen({1300, 0, 100, 900}, visible),
                 QRectF(1300, 30, 100, 900));
        QCOMPARE(Geometry::topLeftAt(*bottomLeft(10, 792), {100, 300}), QPointF(10, 492));
    }

    void scaleSteps_data() {
        QTest::addColumn<double>("current");
        QTest::addColumn<bool>("up");
        QTest::addColumn<std::optional<double>>("expected");
        QTest::newRow("1.0 up") << 1.0 << true << std::optional(1.2);
        QTest::newRow("1.2 up") << 1.2 << true << std::optional(1.5);
        QTest::newRow("1.5 up: the end") << 1.5 << true << std::optional<double>();
        QTest::newRow("1.0 down: the end") << 1.0 << false << std::optional<double>();
        QTest::newRow("1.2005 counts as 1.2") << 1.2005 << false << std::optional(1.0);
        QTest::newRow("1.3 up") << 1.3 << true << std::optional(1.5);
        QTest::newRow("1.3 down") << 1.3 << false << std::optional(1.2);
        QTest::newRow("2.0 is on the last step") << 2.0 << true << std::optional<double>();
    }
    void scaleSteps() {
        QFETCH(double, current);
        QFETCH(bool, up);
        QFETCH(std::optional<double>, expected);
        QCOMPARE(BookmarkPopupScale::stepped(current, up), expected);
    }

    void keys_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<BookmarkKeyCommand>("expected");
        const Qt::KeyboardModifiers none, ctrl = Qt::ControlModifier, alt = Qt::AltModifier,
                                          shift = Qt::ShiftModifier, super = Qt::MetaModifier,
                                          keypad = Qt::KeypadModifier;
        const auto row = [](const char* name, int key, Qt::KeyboardModifiers mods, Kind kind,
                            int position = 0) {
            QTest::newRow(name) << key << mods << BookmarkKeyCommand{kind, position};
        };
        row("Escape with anything", Qt::Key_Escape, ctrl | alt | shift, Kind::Close);
        row("Ctrl+=", Qt::Key_Equal, ctrl, Kind::ScaleUp);
        row("Ctrl+Shift++", Qt::Key_Plus, ctrl | shift, Kind::ScaleUp);
        row("Ctrl+keypad plus", Qt::Key_Plus, ctrl | keypad, Kind::ScaleUp);
        row("Ctrl+Alt+= is nothing", Qt::Key_Equal, ctrl | alt, Kind::None);
        row("Ctrl+Super+- is nothing", Qt::Key_Minus, ctrl | super, Kind::None);
        row("Ctrl+_", Qt::Key_Underscore, ctrl | shift, Kind::ScaleDown);
        row("plain + is nothing", Qt::Key_Plus, none, Kind::None);
        row("Alt+Up", Qt::Key_Up, alt, Kind::MoveBookmarkUp);
        row("Alt+Down", Qt::Key_Down, alt, Kind::MoveBookmarkDown);
        row("Shift+Alt+Up", Qt::Key_Up, shift | alt, Kind::MoveGroupUp);
        row("Shift+Alt+Down", Qt::Key_Down, shift | alt, Kind::MoveGroupDown);
        row("Ctrl+Alt+Up is nothing", Qt::Key_Up, ctrl | alt, Kind::None);
        row("Alt+C", Qt::Key_C, alt, Kind::Capture);
        row("Shift+Alt+C is nothing", Qt::Key_C, shift | alt, Kind::None);
        row("Alt+E", Qt::Key_E, alt, Kind::Edit);
        row("Shift+Alt+E", Qt::Key_E, shift | alt, Kind::RenameGroup);
        row("Alt+N", Qt::Key_N, alt, Kind::Add);
        row("Shift+Alt+N", Qt::Key_N, shift | alt, Kind::NewGroup);
        row("Super+Alt+N is nothing", Qt::Key_N, super | alt, Kind::None);
        row("Return", Qt::Key_Return, none, Kind::Open);
        row("Shift+Return", Qt::Key_Return, shift, Kind::Open);
        row("keypad Enter", Qt::Key_Enter, keypad, Kind::Open);
        row("Alt+Return is nothing", Qt::Key_Return, alt, Kind::None);
        row("Delete", Qt::Key_Delete, none, Kind::Remove);
        row("BackSpace", Qt::Key_Backspace, none, Kind::Remove);
        row("Shift+Delete is nothing", Qt::Key_Delete, shift, Kind::None);
        row("Left", Qt::Key_Left, none, Kind::Copy);
        row("Right", Qt::Key_Right, none, Kind::OpenAlternate);
        row("Shift+Right", Qt::Key_Right, shift, Kind::OpenInEditor);
        row("Alt+Right is nothing", Qt::Key_Right, alt, Kind::None);
        row("Down", Qt::Key_Down, none, Kind::SelectNext);
        row("Up", Qt::Key_Up, none, Kind::SelectPrevious);
        row("1", Qt::Key_1, none, Kind::QuickOpen, 1);
        row("keypad 9", Qt::Key_9, keypad, Kind::QuickOpen, 9);
        row("0 is nothing", Qt::Key_0, none, Kind::None);
        row("Ctrl+1 is nothing", Qt::Key_1, ctrl, Kind::None);
        row("a letter is left to the list", Qt::Key_A, none, Kind::None);
    }
    void keys() {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(BookmarkKeyCommand, expected);
        QCOMPARE(BookmarkKeyTable::command(key, modifiers), expected);
    }
};

QTEST_GUILESS_MAIN(BookmarkPopupRulesTest)
#include "BookmarkPopupRulesTest.moc"
