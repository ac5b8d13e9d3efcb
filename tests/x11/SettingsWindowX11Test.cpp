#include "x11/CornerLabelSession.h"
#include "core/app/Language.h"
#include "core/app/PagerNameSync.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/CornerOverlayController.h"
#include "core/spaces/SpaceStore.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWorkspace.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11WindowServer.h"
#include "ui/CornerLabelView.h"
#include "ui/QtCornerLabelWindows.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtScreenProvider.h"
#include "ui/settings/CornerItemEditor.h"
#include "ui/settings/SettingsWindow.h"
#include "x11/X11TestTools.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QToolButton>

using namespace deskmark;

namespace {

// The first child of `parent` of type W that `match` accepts.
template <typename W, typename Match> W* find(QWidget* parent, Match match) {
    for (W* widget : parent->findChildren<W*>()) {
        if (match(widget))
            return widget;
    }
    return nullptr;
}
template <typename W> W* withText(QWidget* parent, const QString& text) {
    return find<W>(parent, [&](W* w) { return w->text() == text; });
}

// The stores, the X11 Space source, the corner overlay over real windows and the
// settings window over all of them, as the program wires them.
struct Session : CornerLabelSession {
    Session() {
        CornerItemEditor::onCornerChange(settings, &server, [this] { controller.refresh(); });
        QObject::connect(&projects, &ProjectStore::changed, &server,
                         [this] { controller.refresh(); });
        QObject::connect(&presets, &PresetStore::changed, &server,
                         [this] { controller.refresh(); });
        settings.setCornerBgOpacity(1.0);
        settings.setSettingsWindowFloating(false);
    }
    QRect expected(int index, const QString& text, CornerPosition position) const {
        return CornerLabelSession::expected(index, text, position, 13).toAlignedRect();
    }
    QList<DisplayEntry> displays() const {
        QList<DisplayEntry> entries;
        for (QScreen* screen : QGuiApplication::screens())
            entries << DisplayEntry{*spaces.displayUUID(screen->name()), screen->name()};
        return entries;
    }

    X11HotKeyRegistrar registrar;
    FakeWorkspace desk;
    AppCandidateStore candidates{desk, settings};
    PagerNameSync pager{settings, projects, spaces, server, server};
    SettingsWindow window{SettingsContext{settings, projects, presets, spaces, server, registrar,
                                          candidates, pager, [this] { return displays(); },
                                          [] { return PermissionsPaneModel::SessionFacts{}; },
                                          [] { return false; }}};
};

} // namespace

class SettingsWindowX11Test : public QObject {
    Q_OBJECT

    FakeScheduler scheduler_;

private Q_SLOTS:
    void initTestCase() {
        Language::setJapanese(false);
        BookmarkOpener::install(desk_, desk_, desk_, scheduler_);
        runTool("wmctrl", {"-s", "0"});
    }

    // A new user names desktop 1 in Spaces, moves the label in Corner Overlay and gives
    // the right monitor its own place, adds a preset and gives it to the project, and
    // lets the window manager's pager show the name: each step shows on screen at once.
    void aNewUserSetsUpTheLabelsFromTheWindow() {
        Session s;
        QTRY_COMPARE(s.spaces.displays().value(0).currentUUID, std::optional<QString>("desktop-1"));
        s.window.move(160, 120);
        s.window.present();
        QVERIFY(QTest::qWaitForWindowExposed(&s.window));

        // Spaces: desktop 1 becomes "Mail", a new project with the built-in colours.
        s.window.showPane(SettingsWindow::Pane::Spaces);
        QWidget* spaces = s.window.pane(SettingsWindow::Pane::Spaces);
        auto* list = spaces->findChild<QListWidget*>();
        QCOMPARE(list->count(), 4); // the four desktops once, not once per monitor
        QCOMPARE(list->item(1)->text(), QString("Desktop 2"));
        list->setCurrentRow(0);
        auto* name = spaces->findChild<QLineEdit*>();
        QTest::keyClicks(name, "Mail");
        QTest::mouseClick(withText<QPushButton>(spaces, "Create New Project"), Qt::LeftButton);
        QCOMPARE(s.projects.nameForSpace("desktop-1"), std::optional<QString>("Mail"));
        QCOMPARE(list->item(0)->text(), QString("Mail (current)"));
        QVERIFY(s.view(0) && s.view(1));
        QCOMPARE(s.view(0)->geometry(), s.expected(0, "Mail", CornerPosition::Bottom));

        // Corner Overlay: top right everywhere, then bottom left on the right monitor only.
        s.window.showPane(SettingsWindow::Pane::CornerOverlay);
        QWidget* corner = s.window.pane(SettingsWindow::Pane::CornerOverlay);
        const auto globalButton = [&](const QString& position) {
            return find<QToolButton>(corner, [&](QToolButton* b) {
                return b->accessibleName() == position && !qobject_cast<QGroupBox*>(b->parent());
            });
        };
        QTest::mouseClick(globalButton("Top Right"), Qt::LeftButton);
        QCOMPARE(s.settings.cornerPositionRaw(), QString("topRight"));
        for (int i = 0; i < 2; ++i)
            QTRY_COMPARE(s.view(i)->geometry(), s.expected(i, "Mail", CornerPosition::TopRight));
        auto* right = find<QGroupBox>(
            corner, [&](QGroupBox* box) { return box->title() == s.screens.screens().at(1).name; });
        QVERIFY(right);
        auto* bottomLeft = find<QToolButton>(
            right, [](QToolButton* b) { return b->accessibleName() == "Bottom Left"; });
        QVERIFY(!bottomLeft->isEnabled());
        QTest::mouseClick(withText<QCheckBox>(right, "Position"), Qt::LeftButton);
        QVERIFY(bottomLeft->isEnabled());
        QTest::mouseClick(bottomLeft, Qt::LeftButton);
        QTRY_COMPARE(s.view(1)->geometry(), s.expected(1, "Mail", CornerPosition::BottomLeft));
        QCOMPARE(s.view(0)->geometry(), s.expected(0, "Mail", CornerPosition::TopRight));
        QVERIFY(withText<QPushButton>(right, "Reset This Display's Overrides")->isEnabled());

        // Color Presets: a new preset with a typed background; a malformed text is refused.
        s.window.showPane(SettingsWindow::Pane::ColorPresets);
        QWidget* presets = s.window.pane(SettingsWindow::Pane::ColorPresets);
        QTest::mouseClick(withText<QPushButton>(presets, "Add Preset"), Qt::LeftButton);
        QCOMPARE(s.presets.presets().size(), 2);
        const QString added = s.presets.presets().last().id;
        auto* hex = find<QLineEdit>(presets, [](QLineEdit* e) { return e->text() == "#3366CC"; });
        QVERIFY(hex);
        hex->selectAll();
        QTest::keyClicks(hex, "#2a4");
        QTest::keyClick(hex, Qt::Key_Return);
        QCOMPARE(s.presets.preset(added)->bgHex, QString("#3366CC"));
        QVERIFY(find<QLabel>(presets, [](QLabel* l) {
                    return l->text().startsWith("Enter a colour");
                })->isVisible());
        hex->selectAll();
        QTest::keyClicks(hex, "22aa44");
        QTest::keyClick(hex, Qt::Key_Return);
        QCOMPARE(s.presets.preset(added)->bgHex, QString("#22AA44"));

        // Projects: "Mail" takes the new preset; both labels turn green.
        s.window.showPane(SettingsWindow::Pane::Projects);
        QWidget* projects = s.window.pane(SettingsWindow::Pane::Projects);
        auto* preset = projects->findChild<QComboBox*>();
        const int index = preset->findData(added);
        preset->setCurrentIndex(index);
        Q_EMIT preset->activated(index);
        QCOMPARE(s.projects.projectForSpace("desktop-1")->presetID, std::optional(added));
        const QColor green(0x22, 0xAA, 0x44);
        const auto background = [](const QRect& frame) {
            return QPoint(frame.left() + frame.height() / 2, frame.center().y());
        };
        QTRY_VERIFY_WITH_TIMEOUT(
            screenshot().pixelColor(background(s.view(1)->geometry())) == green, 5000);
        QCOMPARE(screenshot().pixelColor(background(s.view(0)->geometry())), green);

        // Mission Control: the pager shows "Mail" while on, and the names found after.
        s.window.showPane(SettingsWindow::Pane::MissionControl);
        QWidget* overview = s.window.pane(SettingsWindow::Pane::MissionControl);
        const QStringList found = s.server.desktopNames();
        auto* pager = withText<QCheckBox>(overview, "Show project names in the desktop's pager");
        const QPoint box(8, pager->height() / 2); // the check box, not the empty row beside it
        QTest::mouseClick(pager, Qt::LeftButton, {}, box);
        QTRY_COMPARE(s.server.desktopNames().value(0), QString("Mail"));
        QCOMPARE(s.server.desktopNames().mid(1), found.mid(1));
        QTest::mouseClick(pager, Qt::LeftButton, {}, box);
        QTRY_COMPARE(s.server.desktopNames(), found);

        // Closed and opened again, the window shows the pane it was left on.
        s.window.close();
        s.window.present();
        QCOMPARE(s.window.currentPane(), SettingsWindow::Pane::MissionControl);
    }

private:
    FakeWorkspace desk_;
};

QTEST_MAIN(SettingsWindowX11Test)
#include "SettingsWindowX11Test.moc"
