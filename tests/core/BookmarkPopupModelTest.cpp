// The bookmark popup's list, keys and form, against an in-memory desktop.

#include "core/BookmarkTestDesktop.h"
#include "core/bookmarks/BookmarkFormModel.h"
#include "core/bookmarks/BookmarkPopupModel.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace deskmark;
using namespace deskmark::testfiles;
using namespace std::chrono_literals;
using SaveResult = BookmarkFormModel::SaveResult;

Q_DECLARE_METATYPE(SaveResult)

namespace {
const QString kSpace = QStringLiteral("desktop-1");
const QString kDisplay = QStringLiteral("D1");

Bookmark bookmark(Bookmark::Kind kind, const QString& target, const QString& group = {}) {
    return {QUuid::createUuid(), kind, QString(), target,
            group.isEmpty() ? std::nullopt : std::optional(group), std::nullopt};
}
} // namespace

class BookmarkPopupModelTest : public QObject {
    Q_OBJECT
    BookmarkTestDesktop t_;
    TempFolder& dir_ = t_.dir;
    FakeWorkspace& desktop_ = t_.desktop;
    FakeScheduler& scheduler_ = t_.scheduler;
    std::unique_ptr<BookmarkPopupModel> popup_;
    QStringList log_; // what the popup asked of its view
    QString folder_, file_;

    // The popup over the project of the fixture: an address and a missing path without a
    // group, then the group "Docs" with a folder (a git checkout) and a file.
    void open() {
        popup_ = std::make_unique<BookmarkPopupModel>(
            t_.services(), kSpace, kDisplay, RunningApp{"org.gnome.Calculator", "Calculator", 1, 1, false});
        BookmarkPopupModel* popup = popup_.get();
        connect(popup, &BookmarkPopupModel::beep, this, [this] { log_ << "beep"; });
        connect(popup, &BookmarkPopupModel::closeRequested, this, [this] { log_ << "close"; });
        connect(popup, &BookmarkPopupModel::copyRequested, this,
                [this](const QString& text) { log_ << "copy " + text; });
        connect(popup, &BookmarkPopupModel::folderMenuRequested, this,
                [this](int row) { log_ << QStringLiteral("folder menu %1").arg(row); });
        connect(popup, &BookmarkPopupModel::formRequested, this,
                [this](const std::optional<Bookmark>& editing, const std::optional<Bookmark>&) {
                    log_ << (editing ? "edit " + editing->target : QStringLiteral("add"));
                });
        connect(popup, &BookmarkPopupModel::groupNameRequested, this,
                [this](const GroupNameRequest& request) { log_ << "prompt " + request.title; });
        connect(popup, &BookmarkPopupModel::deleteConfirmRequested, this,
                [this](const Bookmark& b) { log_ << "confirm " + b.target; });
    }

private Q_SLOTS:
    void init() {
        popup_.reset();
        t_.reset();
        log_.clear();
        t_.settings->setTerminalBundleID("xterm");
        t_.settings->setEditorBundleID("code");
        desktop_.setDefault("x-scheme-handler/https",
                            desktop_.addApplication({"firefox", "Firefox", {"x-scheme-handler/https"},
                                                     {"firefox"}, "firefox", {}}));
        desktop_.addApplication({"xterm", "XTerm", {}, {"xterm"}, "xterm", {}});
        desktop_.addApplication({"code", "Code", {"inode/directory"}, {"code"}, "code", {}});

        folder_ = dir_.path("docs");
        file_ = dir_.path("notes.txt");
        QVERIFY(QDir().mkpath(folder_ + "/.git"));
        writeFile(folder_ + "/.git/HEAD", "ref: refs/heads/main\n");
        writeFile(file_, "x");
        using Kind = Bookmark::Kind;
        for (const Bookmark& b : {bookmark(Kind::File, folder_, "Docs"), bookmark(Kind::Url, "https://example.com"),
                                  bookmark(Kind::File, file_, "Docs"), bookmark(Kind::File, "/nonexistent/x")})
            QVERIFY(t_.projects->addBookmark(b, t_.project));
        open();
    }

    void entriesFollowTheGroupOrder() {
        QStringList shown;
        for (const BookmarkPopupModel::Entry& entry : popup_->entries())
            shown << (entry.header ? entry.identity : popup_->rows()[entry.row].label);
        QCOMPARE(shown, QStringList({"example.com", "x", "header-Docs", "docs", "notes.txt"}));
        QCOMPARE(popup_->rows()[2].branch, std::optional<QString>("main"));
        QVERIFY(popup_->rows()[2].isPlainDirectory && !popup_->rows()[3].isPlainDirectory);
        QVERIFY(!popup_->rows()[1].exists);
        QCOMPARE(popup_->selection(), 0);
        QCOMPARE(popup_->headerCount(), 1);
    }

    void keys_data() {
        QTest::addColumn<int>("selection");
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("call");   // the desktop's last call, in part
        QTest::addColumn<QStringList>("log"); // what the view was asked
        QTest::addColumn<QString>("banner");
        const Qt::KeyboardModifiers none, alt = Qt::AltModifier, shift = Qt::ShiftModifier;
        const QStringList nothing, beep{"beep"};
        QTest::newRow("Enter opens an address in the default browser")
            << 0 << int(Qt::Key_Return) << none << "openURL https://example.com" << nothing << "";
        QTest::newRow("Right opens a new browser window")
            << 0 << int(Qt::Key_Right) << none << "start firefox -new-window https://example.com"
            << nothing << "";
        QTest::newRow("Enter on a missing path tells so") << 1 << int(Qt::Key_Return) << none << ""
                                                          << nothing << "Path not found — can't open";
        QTest::newRow("Enter on a folder asks for the application")
            << 2 << int(Qt::Key_Return) << none << "" << QStringList{"folder menu 2"} << "";
        QTest::newRow("Right on a folder starts the terminal there")
            << 2 << int(Qt::Key_Right) << none << "terminal {dir}/docs" << nothing << "";
        QTest::newRow("Shift+Right opens the editor")
            << 3 << int(Qt::Key_Right) << shift << "with /apps/code.desktop" << nothing << "";
        QTest::newRow("Enter on a file reveals it")
            << 3 << int(Qt::Key_Return) << none << "reveal {dir}/notes.txt" << nothing << "";
        QTest::newRow("Left copies the address")
            << 0 << int(Qt::Key_Left) << none << "" << QStringList{"copy https://example.com"} << "Copied";
        QTest::newRow("quick open 1 opens and closes")
            << 3 << int(Qt::Key_1) << none << "openURL https://example.com" << QStringList{"close"} << "";
        QTest::newRow("quick open of a missing path beeps")
            << 0 << int(Qt::Key_2) << none << "" << beep << "";
        QTest::newRow("quick open of a folder asks")
            << 0 << int(Qt::Key_3) << none << "" << QStringList{"folder menu 2"} << "";
        QTest::newRow("quick open 5 of four rows beeps") << 0 << int(Qt::Key_5) << none << "" << beep << "";
        QTest::newRow("Delete asks first")
            << 0 << int(Qt::Key_Delete) << none << "" << QStringList{"confirm https://example.com"} << "";
        QTest::newRow("Alt+E edits") << 0 << int(Qt::Key_E) << alt << ""
                                     << QStringList{"edit https://example.com"} << "";
        QTest::newRow("Alt+N adds") << 0 << int(Qt::Key_N) << alt << "" << QStringList{"add"} << "";
        QTest::newRow("Shift+Alt+N asks for a new group")
            << 0 << int(Qt::Key_N) << (alt | shift) << "" << QStringList{"prompt New Group"} << "";
        QTest::newRow("Shift+Alt+E renames the row's group")
            << 2 << int(Qt::Key_E) << (alt | shift) << "" << QStringList{"prompt Rename Group"} << "";
        QTest::newRow("Shift+Alt+E without a group beeps")
            << 0 << int(Qt::Key_E) << (alt | shift) << "" << beep << "";
        QTest::newRow("Up from the first row beeps") << 0 << int(Qt::Key_Up) << none << "" << beep << "";
        QTest::newRow("Alt+Up from the first row beeps") << 0 << int(Qt::Key_Up) << alt << "" << beep << "";
        QTest::newRow("Shift+Alt+Up of the only group beeps")
            << 2 << int(Qt::Key_Up) << (alt | shift) << "" << beep << "";
        QTest::newRow("Alt+C from a calculator cannot capture")
            << 0 << int(Qt::Key_C) << alt << "" << beep << "Can't capture from Calculator";
        QTest::newRow("Escape closes") << 0 << int(Qt::Key_Escape) << none << "" << QStringList{"close"} << "";
    }
    void keys() {
        QFETCH(int, selection);
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, call);
        QFETCH(QStringList, log);
        QFETCH(QString, banner);
        popup_->setSelection(selection);
        QVERIFY(popup_->handleKey(key, modifiers));
        call.replace("{dir}", dir_.path());
        if (call.isEmpty())
            QCOMPARE(desktop_.calls, QStringList());
        else
            QVERIFY2(!desktop_.calls.isEmpty() && desktop_.calls.last().contains(call),
                     qPrintable(desktop_.calls.join(" | ")));
        QCOMPARE(log_, log);
        QCOMPARE(popup_->banner().has_value(), !banner.isEmpty());
        if (!banner.isEmpty())
            QVERIFY2(popup_->banner()->text.startsWith(banner), qPrintable(popup_->banner()->text));
    }

    void copyGivesTheExpandedPathAndTheBannerGoesAfterAMoment() {
        t_.projects->addBookmark(bookmark(Bookmark::Kind::File, "~/somewhere"), t_.project);
        popup_->setSelection(2);
        popup_->copySelected();
        QCOMPARE(log_, QStringList{"copy " + QDir::homePath() + "/somewhere"});
        scheduler_.advance(1799ms);
        QVERIFY(popup_->banner());
        scheduler_.advance(1ms);
        QVERIFY(!popup_->banner());
    }

    void reorderingKeepsTheSelectionOnTheBookmark() {
        popup_->setSelection(1); // the missing path, last ungrouped row
        popup_->handleKey(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(popup_->rows()[1].bookmark.target, QStringLiteral("/nonexistent/x"));
        QCOMPARE(popup_->rows()[1].bookmark.group, std::optional<QString>("Docs"));
        QCOMPARE(popup_->entries()[1].header, std::optional<QString>("Docs"));
        QCOMPARE(popup_->selection(), 1);
        QVERIFY(log_.isEmpty());
    }

    void removingWithoutConfirmation() {
        t_.settings->setBookmarkConfirmDelete(false);
        popup_->setSelection(3);
        popup_->handleKey(Qt::Key_Backspace, {});
        QCOMPARE(popup_->rows().size(), 3);
        QCOMPARE(popup_->selection(), 2);
    }

    void scaleIsKeptPerDisplay() {
        popup_->handleKey(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
        popup_->handleKey(Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(t_.settings->bookmarkPopupScale(kDisplay), 1.5);
        QCOMPARE(t_.settings->bookmarkPopupScale(QStringLiteral("D2")), 1.0);
        QVERIFY(log_.isEmpty());
        popup_->handleKey(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(log_, QStringList{"beep"});
    }

    void emptyStates() {
        t_.projects->unassign(kSpace);
        QCOMPARE(popup_->emptyTitle(), QStringLiteral("No project"));
        QVERIFY(popup_->rows().isEmpty());
        t_.projects->set("Empty", std::nullopt, "desktop-2");
        BookmarkPopupModel other(t_.services(), "desktop-2",
                                 kDisplay, std::nullopt);
        QCOMPARE(other.emptyMessage(), QStringLiteral("No bookmarks yet. Add one with the buttons below."));
        QCOMPARE(other.selection(), -1);
    }

    void groupPromptsChangeTheStore() {
        popup_->setSelection(0);
        GroupNameRequest asked;
        connect(popup_.get(), &BookmarkPopupModel::groupNameRequested, this,
                [&](const GroupNameRequest& request) { asked = request; });
        popup_->promptNewGroup(0);
        QVERIFY(!asked.commit("  "));
        QVERIFY(asked.commit(" Later "));
        QCOMPARE(popup_->rows().last().bookmark.target, QStringLiteral("https://example.com"));
        QCOMPARE(t_.projects->groupNames(t_.project), QStringList({"Docs", "Later"}));
        popup_->promptRenameGroup("Docs");
        QCOMPARE(asked.initial, QStringLiteral("Docs"));
        QVERIFY(asked.commit(""));
        QCOMPARE(t_.projects->groupNames(t_.project), QStringList({"Later"}));
        QCOMPARE(popup_->headerCount(), 1);
    }

    void formSave_data() {
        QTest::addColumn<bool>("editFirst");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("group");
        QTest::addColumn<SaveResult>("result");
        QTest::addColumn<int>("bookmarks");
        const QString newGroup = BookmarkFormModel::newGroupTag;
        QTest::newRow("blanks cannot be saved") << false << "   " << "" << SaveResult::Invalid << 4;
        QTest::newRow("a new address is added") << false << "kernel.org" << "" << SaveResult::Saved << 5;
        QTest::newRow("the same address again is a duplicate")
            << false << "https://example.com" << "" << SaveResult::Duplicate << 4;
        QTest::newRow("the same folder written with ~ is a duplicate")
            << false << "~/../" + QDir::home().dirName() + "/..{dir}/./docs" << ""
            << SaveResult::Duplicate << 4;
        QTest::newRow("an unchanged bookmark is not its own duplicate")
            << true << "https://example.com" << "" << SaveResult::Saved << 4;
        QTest::newRow("editing onto another bookmark is a duplicate")
            << true << "{dir}/notes.txt" << "" << SaveResult::Duplicate << 4;
        QTest::newRow("an empty new group means none")
            << false << "https://new.example" << newGroup << SaveResult::Saved << 5;
    }
    void formSave() {
        QFETCH(bool, editFirst);
        QFETCH(QString, target);
        QFETCH(QString, group);
        QFETCH(SaveResult, result);
        QFETCH(int, bookmarks);
        const std::optional<Bookmark> editing =
            editFirst ? std::optional(popup_->rows()[0].bookmark) : std::nullopt;
        BookmarkFormModel form(*t_.projects, *t_.candidates, t_.project, editing, std::nullopt);
        form.target = target.replace("{dir}", dir_.path());
        form.group = group;
        QCOMPARE(form.save(), result);
        QCOMPARE(form.duplicate(), result == SaveResult::Duplicate);
        QCOMPARE(t_.projects->project(t_.project)->bookmarks.size(), bookmarks);
        const QList<Bookmark> saved = t_.projects->project(t_.project)->bookmarks;
        QCOMPARE(std::count_if(saved.cbegin(), saved.cend(), [](const Bookmark& b) { return b.group.has_value(); }),
                 2);
    }

    void formPickerFollowsTheTarget() {
        BookmarkFormModel form(*t_.projects, *t_.candidates, t_.project, std::nullopt, std::nullopt);
        QCOMPARE(form.appPicker(), BookmarkFormModel::AppPicker::None);
        form.target = "example.org";
        QCOMPARE(form.appPicker(), BookmarkFormModel::AppPicker::Browser);
        QCOMPARE(form.appOptions().value(1).tag, QStringLiteral("firefox"));
        form.target = folder_;
        QCOMPARE(form.appPicker(), BookmarkFormModel::AppPicker::Folder);
        QCOMPARE(form.appOptions().last().tag, BookmarkFormModel::otherAppTag);
        form.target = file_;
        QCOMPARE(form.appPicker(), BookmarkFormModel::AppPicker::None);
        QCOMPARE(form.groupOptions().last().tag, BookmarkFormModel::newGroupTag);
    }
};

QTEST_GUILESS_MAIN(BookmarkPopupModelTest)
#include "BookmarkPopupModelTest.moc"
