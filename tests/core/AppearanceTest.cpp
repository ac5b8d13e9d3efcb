#include "ui/AppearanceApplier.h"

#include <QApplication>
#include <QStyle>
#include <QTest>
#include <QWidget>

#include <cmath>
#include <optional>

using namespace deskmark;

namespace {
// The WCAG contrast ratio of two colours.
double contrast(const QColor& a, const QColor& b) {
    auto luminance = [](const QColor& color) {
        auto linear = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

double appContrast(QPalette::ColorRole fore, QPalette::ColorRole back,
                   QPalette::ColorGroup group = QPalette::Active) {
    const QPalette palette = QApplication::palette();
    return contrast(palette.color(group, fore), palette.color(group, back));
}
} // namespace

class AppearanceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        platformStyle_ = QApplication::style()->name();
        platformPalette_ = QApplication::palette();
        applier_.emplace();
    }
    void cleanup() { applier_->apply(QStringLiteral("auto")); }

    void lightAndDarkAreFusionWithReadablePalettes_data() {
        QTest::addColumn<QString>("appearance");
        QTest::addColumn<bool>("dark");
        QTest::newRow("dark") << "dark" << true;
        QTest::newRow("light") << "light" << false;
    }
    void lightAndDarkAreFusionWithReadablePalettes() {
        QFETCH(QString, appearance);
        QFETCH(bool, dark);
        QWidget window; // widgets shown before the change follow it
        const auto* child = new QWidget(&window);
        window.show();
        applier_->apply(dark ? QStringLiteral("light") : QStringLiteral("dark"));
        applier_->apply(appearance);

        QCOMPARE(QApplication::style()->name().toLower(), QStringLiteral("fusion"));
        const QColor windowColor = QApplication::palette().color(QPalette::Window);
        QVERIFY2(dark ? windowColor.lightness() < 80 : windowColor.lightness() > 200,
                 qPrintable(windowColor.name()));
        QTRY_COMPARE(child->palette().color(QPalette::Window), windowColor);

        using P = QPalette;
        for (const auto& [fore, back, minimum] : {std::tuple{P::Text, P::Base, 7.0},
                                                  {P::WindowText, P::Window, 7.0},
                                                  {P::ButtonText, P::Button, 7.0},
                                                  {P::ToolTipText, P::ToolTipBase, 7.0},
                                                  {P::HighlightedText, P::Highlight, 4.5},
                                                  {P::Link, P::Base, 4.5},
                                                  {P::PlaceholderText, P::Base, 3.0}}) {
            const double ratio = appContrast(fore, back);
            QVERIFY2(ratio >= minimum,
                     qPrintable(QStringLiteral("%1 on %2: %3").arg(fore).arg(back).arg(ratio)));
        }
        // Disabled text stays legible yet clearly weaker; a selection stands out.
        for (const auto& [fore, back] : {std::pair{P::Text, P::Base},
                                         {P::WindowText, P::Window},
                                         {P::ButtonText, P::Button},
                                         {P::HighlightedText, P::Highlight}}) {
            const double disabled = appContrast(fore, back, P::Disabled);
            QVERIFY2(disabled >= 2.5 && disabled < appContrast(fore, back) / 1.5,
                     qPrintable(QStringLiteral("%1 on %2: %3").arg(fore).arg(back).arg(disabled)));
        }
        QVERIFY(appContrast(P::Highlight, P::Base) >= 2.0);
    }

    void autoAndUnknownRestoreThePlatformLook_data() {
        QTest::addColumn<QString>("appearance");
        QTest::newRow("auto") << "auto";
        QTest::newRow("unknown") << "sepia";
    }
    void autoAndUnknownRestoreThePlatformLook() {
        QFETCH(QString, appearance);
        QWidget window;
        window.show();
        applier_->apply(QStringLiteral("dark"));
        applier_->apply(appearance);
        QCOMPARE(QApplication::style()->name(), platformStyle_);
        for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base,
                                QPalette::Text, QPalette::Highlight, QPalette::Button})
            QCOMPARE(QApplication::palette().color(role), platformPalette_.color(role));
        QTRY_COMPARE(window.palette().color(QPalette::Window),
                     platformPalette_.color(QPalette::Window));
    }

private:
    QString platformStyle_;
    QPalette platformPalette_;
    std::optional<AppearanceApplier> applier_;
};

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
