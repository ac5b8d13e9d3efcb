#include "core/LabelStores.h"
#include "core/app/Language.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/model/RgbColor.h"
#include "core/settings/CornerSettingsModel.h"
#include "core/settings/FolderAppsPaneModel.h"
#include "core/settings/PermissionsPaneModel.h"
#include "core/settings/PresetsPaneModel.h"
#include "core/settings/ProjectsPaneModel.h"
#include "core/settings/SpacesPaneModel.h"
#include "platform/fake/FakeWorkspace.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace deskmark;

namespace {
CGSDisplay display(const QString& uuid, const QStringList& spaces, const QString& current = {}) {
    CGSDisplay d{uuid, uuid, {}, std::nullopt};
    for (qsizetype i = 0; i < spaces.size(); ++i)
        d.spaces << CGSSpace{spaces[i], i + 1};
    if (!current.isEmpty())
        d.currentUUID = current;
    return d;
}

QStringList titles(const QList<SpacesPaneModel::Row>& rows) {
    QStringList result;
    for (const auto& row : rows)
        result << row.title + (row.current ? "*" : "") + (row.colors ? "#" : "");
    return result;
}

Bookmark bookmark(const QString& target) {
    return {QUuid::createUuid(), Bookmark::Kind::Url, target, target, std::nullopt, std::nullopt};
}
} // namespace

class SettingsPaneModelsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<LabelStores> stores_;

private Q_SLOTS:
    void init() {
        Language::setJapanese(false);
        stores_ = std::make_unique<LabelStores>();
    }

    // Layouts: EWMH (every monitor lists the same desktops) and one set of Spaces per
    // display. Rows list each Space once, number unnamed ones by their place on their
    // display, and colour only Spaces that have a named project.
    void spacesListEachSpaceOnceInDisplayOrder_data() {
        QTest::addColumn<QList<CGSDisplay>>("displays");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("ewmh desktops on two monitors")
            << QList<CGSDisplay>{display("L", {"desktop-1", "desktop-2", "desktop-3"}, "desktop-2"),
                                 display("R", {"desktop-1", "desktop-2", "desktop-3"}, "desktop-2")}
            << QStringList{"Mail#", "Desktop 2*", "Desktop 3"};
        QTest::newRow("own spaces per display")
            << QList<CGSDisplay>{display("L", {"desktop-1", "s2"}, "s2"),
                                 display("R", {"r1", "desktop-3"}, "r1")}
            << QStringList{"Mail#", "Desktop 2*", "Desktop 1*", "Desktop 2"};
        QTest::newRow("no displays") << QList<CGSDisplay>{} << QStringList{};
    }
    void spacesListEachSpaceOnceInDisplayOrder() {
        QFETCH(QList<CGSDisplay>, displays);
        QFETCH(QStringList, expected);
        ProjectStore& projects = stores_->projects;
        projects.setName("Mail", "desktop-1");
        // A project whose name is empty names nothing; a dangling id neither.
        const Project blank = projects.addProject("", std::nullopt);
        projects.assign(blank.id, "desktop-2");
        SpacesPaneModel model(projects, stores_->presets);
        QCOMPARE(titles(model.rows(displays)), expected);
    }

    // Stale assignments are counted and removed through the store; creating a project
    // for an assigned Space gives it a new one and keeps the old; blank names are refused.
    void spacesEditsGoThroughTheStore() {
        ProjectStore& projects = stores_->projects;
        SpacesPaneModel model(projects, stores_->presets);
        projects.setName("Mail", "desktop-1");
        projects.assign(projects.projectForSpace("desktop-1")->id, "desktop-9");
        projects.setName("Old", "desktop-7");
        const QSet<QString> live{"desktop-1", "desktop-2"};
        QCOMPARE(model.staleAssignments(live), (QStringList{"desktop-7", "desktop-9"}));

        QSignalSpy changed(&projects, &ProjectStore::changed);
        QCOMPARE(model.removeStaleAssignments(live), 2);
        QCOMPARE(changed.count(), 2);
        QCOMPARE(model.staleAssignments(live), QStringList{});
        QCOMPARE(projects.projects().size(), 2); // projects stay, only assignments go

        QVERIFY(!model.createProject("  ", std::nullopt, "desktop-1"));
        QVERIFY(model.createProject(" Web ", QString("default"), "desktop-1"));
        QCOMPARE(projects.nameForSpace("desktop-1"), std::optional<QString>("Web"));
        QCOMPARE(projects.projectForSpace("desktop-1")->presetID, std::nullopt);
        QCOMPARE(projects.projects().size(), 3);

        ProjectStore reread(stores_->folder.path());
        QCOMPARE(reread.nameForSpace("desktop-1"), std::optional<QString>("Web"));
        QCOMPARE(reread.assignments().size(), 1);
    }

    // The question before deleting names what goes with the project: its bookmarks and
    // the existing Spaces that become unnamed (Spaces that no longer exist do not count).
    void projectDeletionSaysWhatGoes_data() {
        QTest::addColumn<int>("bookmarks");
        QTest::addColumn<QStringList>("spaces");
        QTest::addColumn<QString>("question");
        QTest::newRow("nothing") << 0 << QStringList{} << "Delete the project “Mail”?";
        QTest::newRow("one of each")
            << 1 << QStringList{"desktop-1", "gone"}
            << "Delete the project “Mail”?\nIts bookmark will be deleted with it.\n"
               "1 Space will become unnamed.";
        QTest::newRow("several")
            << 3 << QStringList{"desktop-1", "desktop-2"}
            << "Delete the project “Mail”?\nIts 3 bookmarks will be deleted with it.\n"
               "2 Spaces will become unnamed.";
    }
    void projectDeletionSaysWhatGoes() {
        QFETCH(int, bookmarks);
        QFETCH(QStringList, spaces);
        QFETCH(QString, question);
        ProjectStore& projects = stores_->projects;
        const Project mail = projects.addProject("Mail", std::nullopt);
        for (int i = 0; i < bookmarks; ++i)
            QVERIFY(projects.addBookmark(bookmark(QString("https://e.org/%1").arg(i)), mail.id));
        for (const QString& space : spaces)
            projects.assign(mail.id, space);
        ProjectsPaneModel model(projects, stores_->presets);
        const QSet<QString> live{"desktop-1", "desktop-2"};
        QCOMPARE(model.deleteQuestion(mail.id, live), std::optional(question));
        const auto rows = model.rows(live);
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows[0].liveSpaceCount, int(spaces.size() - spaces.count("gone")));
        QCOMPARE(rows[0].bookmarkCount, bookmarks);
        model.deleteProject(mail.id);
        QCOMPARE(model.deleteQuestion(mail.id, live), std::nullopt);
        QVERIFY(projects.assignments().isEmpty());
    }

    void projectsRenameAndPreset() {
        ProjectStore& projects = stores_->projects;
        ProjectsPaneModel model(projects, stores_->presets);
        const Project b = projects.addProject("b 10", std::nullopt);
        const Project a = projects.addProject("b 9", std::nullopt);
        QVERIFY(!model.rename(a.id, " \n"));
        QVERIFY(!model.rename(QUuid::createUuid(), "x"));
        QVERIFY(model.rename(a.id, " a "));
        const QString blue = stores_->presets.addPreset().id;
        model.setPreset(b.id, blue);
        const auto rows = model.rows({});
        QCOMPARE(rows[0].name, QString("a"));
        QCOMPARE(rows[0].presetID, QString("default"));
        QCOMPARE(rows[1].presetID, blue);
        QCOMPARE(rows[1].colors, stores_->presets.colors(blue));
    }

    // The colour field accepts a text exactly when the preset reader does, and stores it
    // in the reader's "#RRGGBB" form.
    void presetHexAcceptsWhatThePresetReaderAccepts_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stored");
        QTest::newRow("lower case") << "#3366cc"
                                    << "#3366CC";
        QTest::newRow("without #") << "3366CC"
                                   << "#3366CC";
        QTest::newRow("three digits") << "#36C"
                                      << "";
        QTest::newRow("eight digits") << "#3366CCFF"
                                      << "";
        QTest::newRow("blank before") << " #3366CC"
                                      << "";
        QTest::newRow("blank after") << "#3366CC "
                                     << "";
        QTest::newRow("two #") << "##3366CC"
                               << "";
        QTest::newRow("sign") << "+33366"
                              << "";
        QTest::newRow("not hex") << "#33GG00"
                                 << "";
        QTest::newRow("full-width digits") << "#３３６６ＣＣ"
                                           << "";
        QTest::newRow("empty") << ""
                               << "";
    }
    void presetHexAcceptsWhatThePresetReaderAccepts() {
        QFETCH(QString, text);
        QFETCH(QString, stored);
        QCOMPARE(PresetsPaneModel::normalizedHex(text).has_value(),
                 RgbColor::fromDeskmarkHex(text).has_value());
        PresetsPaneModel model(stores_->presets, stores_->projects);
        const QString id = model.add();
        const ColorPreset before = *stores_->presets.preset(id);
        QCOMPARE(model.setColor(id, PresetsPaneModel::Part::Text, text), !stored.isEmpty());
        const ColorPreset after = *stores_->presets.preset(id);
        QCOMPARE(after.textHex, stored.isEmpty() ? before.textHex : stored);
        QCOMPARE(after.bgHex, before.bgHex);
    }

    // Deleting a preset clears it from the projects that used it; "default" stays.
    void presetDeletionClearsProjects() {
        PresetsPaneModel model(stores_->presets, stores_->projects);
        const QString id = model.add();
        QVERIFY(model.rename(id, " Sea "));
        QVERIFY(!model.rename(id, ""));
        QCOMPARE(stores_->presets.preset(id)->name, QString("Sea"));
        const Project mail = stores_->projects.addProject("Mail", id);
        model.remove(PresetStore::kDefaultID);
        QVERIFY(stores_->presets.preset(PresetStore::kDefaultID));
        model.remove(id);
        QCOMPARE(stores_->presets.preset(id), std::nullopt);
        QCOMPARE(stores_->projects.project(mail.id)->presetID, std::nullopt);
    }

    // Every item, global and per display: the global section writes the global value;
    // a display's section writes the display's own value, which shows only while its
    // override is on. Numbers stay within their bounds; unknown raw texts change nothing.
    void cornerItemsWriteTheirScope_data() {
        QTest::addColumn<CornerOverrideItem>("item");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("expected");
        using I = CornerOverrideItem;
        QTest::newRow("enabled") << I::Enabled << QVariant(false) << QVariant(false);
        QTest::newRow("position") << I::Position << QVariant("topRight") << QVariant("topRight");
        QTest::newRow("position unknown") << I::Position << QVariant("middle") << QVariant();
        QTest::newRow("font size") << I::FontSize << QVariant(20.0) << QVariant(20.0);
        QTest::newRow("font size too big") << I::FontSize << QVariant(400.0) << QVariant(48.0);
        QTest::newRow("offset y below") << I::OffsetY << QVariant(-999.0) << QVariant(-200.0);
        QTest::newRow("offset x") << I::OffsetX << QVariant(15.0) << QVariant(15.0);
        QTest::newRow("margin negative") << I::Margin << QVariant(-3.0) << QVariant(0.0);
        QTest::newRow("weight") << I::Weight << QVariant("heavy") << QVariant("heavy");
        QTest::newRow("padding") << I::VPadding << QVariant("normal") << QVariant("normal");
        QTest::newRow("shape") << I::Shape << QVariant("square") << QVariant("square");
        QTest::newRow("colors") << I::ColorMode << QVariant("defaultColors")
                                << QVariant("defaultColors");
        QTest::newRow("opacity above 1") << I::BgOpacity << QVariant(1.5) << QVariant(1.0);
    }
    void cornerItemsWriteTheirScope() {
        QFETCH(CornerOverrideItem, item);
        QFETCH(QVariant, value);
        QFETCH(QVariant, expected);
        SettingsStore& settings = stores_->settings;
        CornerSettingsModel global(settings, std::nullopt);
        CornerSettingsModel right(settings, QString("RIGHT"));
        const QVariant original = global.value(item);
        QCOMPARE(right.value(item), original);

        right.setValue(item, value);
        QCOMPARE(global.value(item), original); // a display's value never touches the global
        QCOMPARE(right.value(item), original);  // and shows only while its override is on
        settings.setOverride(item, true, "RIGHT");
        QCOMPARE(right.value(item), expected.isValid() ? expected : original);

        global.setValue(item, value);
        QCOMPARE(global.value(item), expected.isValid() ? expected : original);
        QCOMPARE(CornerSettingsModel(settings, QString("LEFT")).value(item), global.value(item));
        if (CornerSettingsModel::kind(item) == CornerSettingsModel::Kind::Choice) {
            QStringList raws;
            for (const auto& option : CornerSettingsModel::options(item))
                raws << option.raw;
            QVERIFY(raws.contains(global.value(item).toString()));
        }
    }

    // ▲▼ store the whole shown order, keep the places of applications that are not
    // installed, and stop at the edges; hiding and showing edit the hidden set.
    void folderAppsMoveAndHide() {
        FakeWorkspace desk;
        for (const char* id : {"alpha", "beta", "gamma"})
            desk.addApplication({id, QString(id), {"inode/directory"}, {}, {}, {}});
        SettingsStore& settings = stores_->settings;
        settings.setFolderAppOrder({"gone", "gamma"});
        AppCandidateStore candidates(desk, settings);
        candidates.ensureLoaded();
        FolderAppsPaneModel model(candidates, settings);
        const auto shown = [&] {
            QStringList ids;
            for (const auto& app : candidates.visibleFolderApps())
                ids << app.bundleID;
            return ids;
        };
        QCOMPARE(shown(), (QStringList{"gamma", "alpha", "beta"}));
        model.move("gamma", true);
        QCOMPARE(settings.folderAppOrder(), (QStringList{"gone", "gamma"}));
        model.move("beta", true);
        QCOMPARE(settings.folderAppOrder(), (QStringList{"gamma", "beta", "alpha", "gone"}));
        model.move("alpha", false);
        QCOMPARE(shown(), (QStringList{"gamma", "beta", "alpha"}));
        model.setShown("beta", false);
        model.setShown("beta", false);
        QCOMPARE(settings.folderAppHidden(), QStringList{"beta"});
        QCOMPARE(shown(), (QStringList{"gamma", "alpha"}));
        model.setShown("beta", true);
        QCOMPARE(settings.folderAppHidden(), QStringList{});
    }

    // Each facility is reported with a remedy exactly where something is missing; a tray
    // works but suggests a StatusNotifierItem host; held hot keys are named.
    void permissionsRows_data() {
        using M = PermissionsPaneModel;
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("desktops");
        QTest::addColumn<int>("panel");
        QTest::addColumn<bool>("keyGrabbed");
        QTest::addColumn<QString>("inputMethod");
        QTest::addColumn<bool>("compositor");
        QTest::addColumn<QString>("oks");
        QTest::addColumn<QString>("remedies");
        QTest::newRow("everything") << "EWMH" << 4 << int(M::PanelItem::StatusNotifier) << true
                                    << "fcitx5" << true << "11111" << "00000";
        QTest::newRow("bare X") << "EWMH" << 0 << int(M::PanelItem::None) << false << "" << false
                                << "00000" << "11111";
        QTest::newRow("tray") << "EWMH" << 2 << int(M::PanelItem::Tray) << true << "IBus" << false
                              << "11110" << "01001";
        QTest::newRow("i3 gone") << "i3" << 0 << int(M::PanelItem::StatusNotifier) << true << ""
                                 << false << "01100" << "10011";
    }
    void permissionsRows() {
        QFETCH(QString, source);
        QFETCH(int, desktops);
        QFETCH(int, panel);
        QFETCH(bool, keyGrabbed);
        QFETCH(QString, inputMethod);
        QFETCH(bool, compositor);
        QFETCH(QString, oks);
        QFETCH(QString, remedies);
        PermissionsPaneModel::SessionFacts facts;
        facts.spaceSource = source;
        facts.desktops = desktops;
        facts.panelItem = static_cast<PermissionsPaneModel::PanelItem>(panel);
        facts.hotKeys = {{HotKeyAction::Bookmark, true}, {HotKeyAction::Switcher, keyGrabbed}};
        facts.inputMethod = inputMethod;
        facts.compositor = compositor;
        QString gotOks, gotRemedies;
        const auto rows = PermissionsPaneModel::rows(facts);
        for (const auto& row : rows) {
            gotOks += row.ok ? '1' : '0';
            gotRemedies += row.remedy.isEmpty() ? '0' : '1';
        }
        QCOMPARE(gotOks, oks);
        QCOMPARE(gotRemedies, remedies);
        QCOMPARE(rows[2].state.contains("Switch Space"), !keyGrabbed);
        QVERIFY(rows[0].title.contains(source) && rows[0].remedy.contains(source) == !desktops);
    }

    void cornerChoicesInJapanese() {
        Language::setJapanese(true);
        const auto shapes = CornerSettingsModel::options(CornerOverrideItem::Shape);
        QCOMPARE(shapes.first().label, QString("半円（カプセル）"));
        const auto modes = CornerSettingsModel::options(CornerOverrideItem::ColorMode);
        QCOMPARE(modes[0].label, QString("デフォルト（黒地・白字）"));
        QCOMPARE(modes[1].label, QString("Space の色を反映"));
        QCOMPARE(CornerSettingsModel::options(CornerOverrideItem::Position).size(), 8);
        QCOMPARE(CornerSettingsModel::valueText(CornerOverrideItem::BgOpacity, 0.8),
                 QString("80 %"));
    }
};

QTEST_GUILESS_MAIN(SettingsPaneModelsTest)
#include "SettingsPaneModelsTest.moc"
