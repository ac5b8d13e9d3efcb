#include "ui/NameEditorWindow.h"
#include "core/app/Language.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace deskmark;

// Drives the editor window with the keyboard, as a user would, and checks the store.
class NameEditorWindowTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<ProjectStore> projects_;
    std::unique_ptr<PresetStore> presets_;
    QPointer<NameEditorWindow> window_;

    void open(const QString& space) {
        window_ = new NameEditorWindow(std::make_unique<NameEditorModel>(
            *projects_, *presets_, space, QSet<QString>{"X", "Y"}));
        window_->present();
    }

    template <typename T> T* child(const char* name) {
        T* widget = window_->findChild<T*>(QString::fromLatin1(name));
        if (!widget)
            qFatal("the editor has no %s", name);
        return widget;
    }

    // Every wrapped text of the window has the height its lines need at its width.
    void verifyNoTextIsCut() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        for (const QLabel* label : window_->findChildren<QLabel*>()) {
            if (label->isVisible() && label->wordWrap())
                QVERIFY2(label->height() >= label->heightForWidth(label->width()),
                         qPrintable(label->text()));
        }
    }

    static void processDeletions() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private Q_SLOTS:
    void init() {
        Language::setJapanese(false);
        dir_ = std::make_unique<QTemporaryDir>();
        projects_ = std::make_unique<ProjectStore>(dir_->path());
        presets_ = std::make_unique<PresetStore>(dir_->path());
        presets_->addPreset(); // "New Preset", #3366CC on white
    }

    void cleanup() { delete window_; }

    void typingAndPickingThenReturnSaves() {
        open("X");
        auto* name = child<QLineEdit>("nameField");
        auto* preset = child<QComboBox>("presetPicker");
        auto* preview = child<QLabel>("preview");
        QCOMPARE(window_->focusWidget(), name);
        QCOMPARE(preview->text(), QString("Not shown"));
        QVERIFY(child<QLabel>("note")->isHidden());

        QTest::keyClicks(name, "  Work");
        QCOMPARE(preview->text(), QString("Work"));
        QCOMPARE(preset->currentText(), QString("Default"));
        QVERIFY(preview->styleSheet().contains("#000000"));
        QTest::keyClick(preset, Qt::Key_Down);
        QCOMPARE(preset->currentText(), QString("New Preset"));
        QVERIFY(preview->styleSheet().contains("#3366CC"));
        QCOMPARE(projects_->projects().size(), 0); // nothing is stored before Save

        QTest::keyClick(preset, Qt::Key_Return);
        processDeletions();
        QVERIFY(window_.isNull());
        QCOMPARE(projects_->nameForSpace("X"), QString("Work"));
        QCOMPARE(projects_->projectForSpace("X")->presetID, presets_->presets().last().id);
    }

    void escapeClosesWithoutSaving() {
        projects_->set("Work", std::nullopt, "X");
        open("X");
        auto* name = child<QLineEdit>("nameField");
        QCOMPARE(name->text(), QString("Work"));
        QTest::keyClicks(name, " changed");
        QTest::keyClick(name, Qt::Key_Escape);
        QVERIFY(!window_->isVisible());
        processDeletions();
        QVERIFY(window_.isNull());
        QCOMPARE(projects_->nameForSpace("X"), QString("Work"));
    }

    void choosingAnExistingProjectShowsTheNoteAndJoinsIt() {
        projects_->set("Shared", std::nullopt, "Y");
        open("X");
        auto* picker = child<QComboBox>("projectPicker");
        auto* note = child<QLabel>("note");
        QCOMPARE(picker->currentText(), QString("New Project"));
        QTest::keyClicks(child<QLineEdit>("nameField"), "typed");
        QTest::keyClick(picker, Qt::Key_Down);
        QCOMPARE(picker->currentText(), QString("Shared"));
        QCOMPARE(child<QLineEdit>("nameField")->text(), QString("Shared"));
        QVERIFY(!note->isHidden());
        QVERIFY(note->text().contains("all 2 assigned Spaces change"));

        verifyNoTextIsCut(); // the window grows by the note
        // Its size is fixed, and there is nothing to maximise.
        QCOMPARE(window_->minimumSize(), window_->maximumSize());
        QVERIFY(!window_->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));

        QTest::keyClick(child<QLineEdit>("nameField"), Qt::Key_Return);
        QCOMPARE(projects_->projects().size(), 1);
        QCOMPARE(projects_->projectForSpace("X"), projects_->projectForSpace("Y"));
    }

    void tabVisitsEveryControlInOrder() {
        open("X");
        QStringList order;
        QWidget* widget = child<QComboBox>("projectPicker");
        for (int i = 0; i < 5; ++i) {
            if (auto* button = qobject_cast<QPushButton*>(widget))
                order << button->text();
            else
                order << widget->objectName();
            do
                widget = widget->nextInFocusChain();
            while (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible());
        }
        QCOMPARE(order,
                 (QStringList{"projectPicker", "nameField", "presetPicker", "Cancel", "Save"}));
    }
};

QTEST_MAIN(NameEditorWindowTest)
#include "NameEditorWindowTest.moc"
