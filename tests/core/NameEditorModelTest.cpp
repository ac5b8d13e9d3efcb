#include "core/editor/NameEditorModel.h"
#include "core/app/Language.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace deskmark;

namespace {
const QSet<QString> kLive{"X", "Y", "Z", "V"};

QStringList titles(const QList<NameEditorModel::ProjectEntry>& entries) {
    QStringList result;
    for (const auto& entry : entries)
        result << entry.title;
    return result;
}

Bookmark bookmark(const QString& target) {
    return {QUuid::createUuid(), Bookmark::Kind::Url, target, target, std::nullopt, std::nullopt};
}
} // namespace

class NameEditorModelTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<ProjectStore> projects_;
    std::unique_ptr<PresetStore> presets_;
    QString blue_; // a preset besides "default"

    std::unique_ptr<NameEditorModel> open(const QString& space) {
        return std::make_unique<NameEditorModel>(*projects_, *presets_, space, kLive);
    }

private Q_SLOTS:
    void init() {
        Language::setJapanese(false);
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY(dir_->isValid());
        projects_ = std::make_unique<ProjectStore>(dir_->path());
        presets_ = std::make_unique<PresetStore>(dir_->path());
        ColorPreset preset = presets_->addPreset();
        preset.name = "Blue";
        presets_->updatePreset(preset);
        blue_ = preset.id;
    }

    void unassignedSpaceOpensOnANewProject() {
        const auto editor = open("X");
        QCOMPARE(editor->projectID(), std::nullopt);
        QCOMPARE(editor->selectedProjectIndex(), 0);
        QCOMPARE(editor->presetID(), QString("default"));
        QCOMPARE(editor->selectedPresetIndex(), 0);
        QCOMPARE(editor->sharedNote(), std::nullopt);
    }

    void assignedSpaceLoadsItsProject() {
        projects_->set("Work", blue_, "X");
        const auto editor = open("X");
        QCOMPARE(editor->projectID(), projects_->projectForSpace("X")->id);
        QCOMPARE(editor->selectedProjectIndex(), 1);
        QCOMPARE(editor->name(), QString("Work"));
        QCOMPARE(editor->presetID(), blue_);
        QCOMPARE(editor->selectedPresetIndex(), 1);
        QCOMPARE(editor->sharedCount(), 1);
        QCOMPARE(editor->sharedNote(), QString("Name and color changes apply to the project "
                                               "“Work” (no new project is created)."));
    }

    void projectWithADeletedPresetOpensOnDefault() {
        projects_->set("Work", QString("gone"), "X");
        QCOMPARE(open("X")->presetID(), QString("default"));
        projects_->set("Work", std::nullopt, "X");
        QCOMPARE(open("X")->presetID(), QString("default"));
    }

    void pickerListsNewProjectThenTheProjectsByName() {
        projects_->set("Item 10", std::nullopt, "Y");
        projects_->addProject("", std::nullopt);
        projects_->set("Item 2", std::nullopt, "Z");
        const auto editor = open("X");
        QCOMPARE(titles(editor->projectEntries()),
                 (QStringList{"New Project", "(no name)", "Item 2", "Item 10"}));
        QCOMPARE(editor->projectEntries().first().projectID, std::nullopt);
        // the list is what existed when the editor opened
        projects_->addProject("Later", std::nullopt);
        QCOMPARE(editor->projectEntries().size(), 4);

        Language::setJapanese(true);
        QCOMPARE(titles(editor->projectEntries()).mid(0, 2),
                 (QStringList{"新規プロジェクト", "（名前なし）"}));
    }

    void choosingAProjectDiscardsTheTypedText() {
        const QUuid work = projects_->addProject("Work", blue_).id;
        const auto editor = open("X");
        QSignalSpy changed(editor.get(), &NameEditorModel::changed);
        editor->setName("typed");
        editor->selectProject(work);
        QCOMPARE(editor->name(), QString("Work"));
        QCOMPARE(editor->presetID(), blue_);
        QCOMPARE(editor->selectedProjectIndex(), 1);
        editor->setName("typed again");
        editor->selectProject(std::nullopt);
        QCOMPARE(editor->name(), QString());
        QCOMPARE(editor->presetID(), QString("default"));
        QCOMPARE(changed.count(), 4);
    }

    void sharedCountCountsLiveSpacesAndThisOne() {
        projects_->set("Shared", std::nullopt, "Y");
        const QUuid shared = projects_->projectForSpace("Y")->id;
        projects_->assign(shared, "Z");
        projects_->assign(shared, "gone"); // a Space that no longer exists
        const QUuid lonely = projects_->addProject("Lonely", std::nullopt).id;

        const auto editor = open("X");
        editor->selectProject(shared);
        editor->setName("Edited"); // the note keeps the stored name
        QCOMPARE(editor->sharedCount(), 3);
        QCOMPARE(editor->sharedNote(),
                 QString("Name and color changes apply to the project “Shared” (all 3 assigned "
                         "Spaces change; no new project is created)."));
        editor->selectProject(lonely);
        QCOMPARE(editor->sharedCount(), 1);

        const auto onY = open("Y");
        QCOMPARE(onY->sharedCount(), 2); // already assigned: not counted twice

        Language::setJapanese(true);
        QCOMPARE(onY->sharedNote(),
                 QString("名前・カラーの変更はプロジェクト「Shared」に反映されます（割り当て中の 2 "
                         "個の Space すべてで変わります。新規プロジェクトは作られません）。"));
    }

    void previewShowsTheTrimmedNameInThePresetsColours() {
        const auto editor = open("X");
        editor->setName("  Work \n");
        editor->setPresetID(blue_);
        const ColorPair blue{*RgbColor::fromDeskmarkHex("#3366CC"), {1, 1, 1}};
        QCOMPARE(editor->preview(), (NameEditorModel::Preview{"Work", blue}));
        // an id that is no preset falls back to the default colours
        editor->setPresetID("gone");
        QCOMPARE(editor->selectedPresetIndex(), -1);
        QCOMPARE(editor->preview().colors, (ColorPair{{0, 0, 0}, {1, 1, 1}}));
        editor->setName(" \t");
        QCOMPARE(editor->preview(), (NameEditorModel::Preview{"Not shown", std::nullopt}));
        Language::setJapanese(true);
        QCOMPARE(editor->preview().text, QString("表示なし"));
    }

    void presetsAreReadLive() {
        const auto editor = open("X");
        QSignalSpy changed(editor.get(), &NameEditorModel::changed);
        const ColorPreset added = presets_->addPreset();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(editor->presetEntries().last(),
                 (NameEditorModel::PresetEntry{added.id, added.name}));
    }

    // ---- save ----

    void savingAnEmptyNameUnassignsAndKeepsTheProject() {
        projects_->set("Work", blue_, "X");
        const auto editor = open("X");
        editor->setName("   ");
        editor->save();
        QCOMPARE(projects_->projectForSpace("X"), std::nullopt);
        QCOMPARE(titles(open("X")->projectEntries()), (QStringList{"New Project", "Work"}));
    }

    void savingAnExistingProjectChangesItForAllItsSpaces() {
        projects_->set("Shared", std::nullopt, "Y");
        const QUuid shared = projects_->projectForSpace("Y")->id;
        projects_->assign(shared, "Z");
        const auto editor = open("X");
        editor->selectProject(shared);
        // a bookmark added elsewhere while the editor is open survives the save
        QVERIFY(projects_->addBookmark(bookmark("https://example.org"), shared));
        editor->setName(" Renamed ");
        editor->setPresetID(blue_);
        editor->save();

        QCOMPARE(projects_->projects().size(), 1);
        const Project saved = *projects_->project(shared);
        QCOMPARE(saved.name, QString("Renamed"));
        QCOMPARE(saved.presetID, blue_);
        QCOMPARE(saved.bookmarks.size(), 1);
        for (const char* space : {"X", "Y", "Z"})
            QCOMPARE(projects_->nameForSpace(space), QString("Renamed"));
    }

    void savingANewProjectOnAnUnnamedSpaceCreatesIt() {
        const auto editor = open("X");
        editor->setName("Fresh");
        editor->setPresetID(blue_);
        editor->save();
        QCOMPARE(projects_->projects().size(), 1);
        const Project created = *projects_->projectForSpace("X");
        QCOMPARE(created.name, QString("Fresh"));
        QCOMPARE(created.presetID, blue_);
    }

    void savingANewProjectMovesOnlyThisSpace() {
        projects_->set("Old", blue_, "X");
        const QUuid old = projects_->projectForSpace("X")->id;
        projects_->assign(old, "Y");
        QVERIFY(projects_->addBookmark(bookmark("https://example.org"), old));
        const Project before = *projects_->project(old);

        const auto editor = open("X");
        editor->selectProject(std::nullopt);
        editor->setName("Fresh");
        editor->save();

        QCOMPARE(projects_->projects().size(), 2);
        QCOMPARE(projects_->nameForSpace("X"), QString("Fresh"));
        QCOMPARE(projects_->projectForSpace("X")->presetID, std::nullopt);
        QCOMPARE(projects_->projectForSpace("Y")->id, old);
        QCOMPARE(*projects_->project(old), before);
    }

    void aProjectDeletedWhileOpenIsSavedAsANewOne() {
        projects_->set("Doomed", blue_, "X");
        const QUuid doomed = projects_->projectForSpace("X")->id;
        const auto editor = open("X");
        projects_->deleteProject(doomed);
        editor->setName("Again");
        QCOMPARE(editor->sharedCount(), 1);
        editor->save();
        QCOMPARE(projects_->projects().size(), 1);
        QVERIFY(projects_->projectForSpace("X")->id != doomed);
        QCOMPARE(projects_->nameForSpace("X"), QString("Again"));
        QCOMPARE(projects_->projectForSpace("X")->presetID, blue_);
    }

    void aChosenProjectDeletedWhileOpenLeavesTheOldProjectAlone() {
        projects_->set("Current", std::nullopt, "X");
        const QUuid current = projects_->projectForSpace("X")->id;
        projects_->assign(current, "Y");
        const QUuid chosen = projects_->addProject("Chosen", std::nullopt).id;
        const auto editor = open("X");
        editor->selectProject(chosen);
        projects_->deleteProject(chosen);
        // choosing the vanished project again finds nothing to load
        editor->selectProject(chosen);
        QCOMPARE(editor->name(), QString());
        editor->setName("Chosen");
        editor->save();

        QCOMPARE(projects_->projects().size(), 2);
        QCOMPARE(projects_->nameForSpace("X"), QString("Chosen"));
        QVERIFY(projects_->projectForSpace("X")->id != chosen);
        QCOMPARE(projects_->projectForSpace("Y")->id, current);
        QCOMPARE(projects_->project(current)->name, QString("Current"));
    }
};

QTEST_GUILESS_MAIN(NameEditorModelTest)
#include "NameEditorModelTest.moc"
