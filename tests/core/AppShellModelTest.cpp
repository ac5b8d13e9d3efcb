#include "core/app/PresetMenuModel.h"
#include "core/app/SpaceHistory.h"
#include "core/app/StatusTitle.h"

#include <QTest>

using namespace deskmark;

namespace {
CGSDisplay display(const QString& uuid, std::optional<QString> current) {
    CGSDisplay d;
    d.displayUUID = uuid;
    d.rawDisplayID = uuid;
    d.currentUUID = std::move(current);
    return d;
}

QList<ColorPreset> presets(const QStringList& ids) {
    QList<ColorPreset> result;
    for (const QString& id : ids)
        result.append({id, id.toUpper(), "#000000", "#FFFFFF"});
    return result;
}
} // namespace

class AppShellModelTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void activeDisplayFollowsTheStatusItemsDisplay() {
        const QList<CGSDisplay> displays{display("A", "a1"), display("B", "b2")};
        QCOMPARE(activeDisplayCurrentSpace(displays, QString("B")), QString("b2"));
        // unknown or missing status display: the first display stands in
        QCOMPARE(activeDisplayCurrentSpace(displays, QString("C")), QString("a1"));
        QCOMPARE(activeDisplayCurrentSpace(displays, std::nullopt), QString("a1"));
        QCOMPARE(activeDisplayCurrentSpace({}, QString("A")), std::nullopt);
        // a known display without a current Space answers nothing, with no fallback
        const QList<CGSDisplay> silent{display("A", "a1"), display("B", std::nullopt)};
        QCOMPARE(activeDisplayCurrentSpace(silent, QString("B")), std::nullopt);
    }

    void statusTitleCases() {
        QCOMPARE(StatusTitle::compute(true, QString("Work"), true), (StatusTitle{"Work", "Work"}));
        QCOMPARE(StatusTitle::compute(true, std::nullopt, true), StatusTitle{});
        QCOMPARE(StatusTitle::compute(true, QString(""), true), StatusTitle{});
        QCOMPARE(StatusTitle::compute(false, QString("Work"), true), StatusTitle{});
        QCOMPARE(StatusTitle::compute(true, std::nullopt, false),
                 (StatusTitle{QString::fromUtf8("🏷"), ""}));

        // Long names are cut to 24 characters in the panel and whole in the tool tip;
        // a character is what the reader sees as one.
        const QString sixty =
            QString("Quarterly planning and budget review for the northern region").left(60);
        QCOMPARE(sixty.size(), 60);
        const StatusTitle cut = StatusTitle::compute(true, sixty, true);
        QCOMPARE(cut.text, QString("Quarterly planning and…"));
        QCOMPARE(cut.toolTip, sixty);
        const QString exact = QString(24, 'x');
        QCOMPARE(StatusTitle::shortened(exact), exact);
        QCOMPARE(StatusTitle::shortened(exact + "y"), QString(23, 'x') + "…");
        // 30 Japanese letters, and 25 flags of two code points each
        const QString japanese =
            QString::fromUtf8("四半期の予算見直しと来期の計画に関する打ち合わせ資料作成作業");
        QCOMPARE(StatusTitle::shortened(japanese), japanese.left(23) + "…");
        QString flags;
        for (int i = 0; i < 25; ++i)
            flags += QString::fromUtf8("🇯🇵");
        QCOMPARE(StatusTitle::shortened(flags), flags.left(23 * 4) + "…");
        QCOMPARE(StatusTitle::shortened(flags.left(24 * 4)), flags.left(24 * 4));
    }

    void historyRemembersThePreviousSpacePerDisplay() {
        SpaceHistory history;
        history.record({display("A", "a1"), display("B", "b1")});
        QCOMPARE(history.previousSpace("A"), std::nullopt);
        history.record({display("A", "a2"), display("B", "b1")});
        history.record({display("A", "a2"), display("B", "b1")}); // no change, no effect
        QCOMPARE(history.previousSpace("A"), QString("a1"));
        QCOMPARE(history.previousSpace("B"), std::nullopt);
        // a display that vanishes keeps its entries; one without a current Space is skipped
        history.record({display("B", std::nullopt)});
        history.record({display("A", "a3")});
        QCOMPARE(history.previousSpace("A"), QString("a2"));
        QCOMPARE(history.lastCurrentSpaces().value("B"), QString("b1"));
    }

    void presetMenuChecksTheProjectsPreset() {
        const auto list = presets({"default", "a", "b"});
        const auto checked = [](const QList<PresetMenuModel::Entry>& entries) {
            QStringList ids;
            for (const auto& entry : entries)
                if (entry.checked)
                    ids << entry.presetID;
            return ids;
        };
        QCOMPARE(checked(PresetMenuModel::entries(list, QString("b"))), QStringList{"b"});
        QCOMPARE(checked(PresetMenuModel::entries(list, std::nullopt)), QStringList{"default"});
        QCOMPARE(checked(PresetMenuModel::entries(list, QString("gone"))), QStringList{});
        QCOMPARE(PresetMenuModel::entries(list, std::nullopt).at(1).title, QString("A"));
    }

    void nextPresetCyclesAndWraps() {
        const auto list = presets({"a", "b", "c"});
        QCOMPARE(PresetMenuModel::nextPresetID(list, QString("b")), QString("c"));
        QCOMPARE(PresetMenuModel::nextPresetID(list, QString("c")), QString("a"));
        QCOMPARE(PresetMenuModel::nextPresetID(list, QString("deleted")), QString("a"));
        // no preset id means "default", which moves to the preset after it
        QCOMPARE(PresetMenuModel::nextPresetID(presets({"default", "x"}), std::nullopt),
                 QString("x"));
        QCOMPARE(PresetMenuModel::nextPresetID({}, QString("a")), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(AppShellModelTest)
#include "AppShellModelTest.moc"
