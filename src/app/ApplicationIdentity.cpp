#include "app/ApplicationIdentity.h"

#include "core/app/SystemLog.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>

namespace deskmark {

void ApplicationIdentity::apply(QApplication& application, bool japanese) {
    QGuiApplication::setDesktopFileName(QString::fromLatin1(kDesktopFileName));
    // The installed theme's icon where there is one, else the one built in.
    QApplication::setWindowIcon(
        QIcon::fromTheme(QString::fromLatin1(kDesktopFileName),
                         QIcon(QStringLiteral(":/icons/io.github.deskmark.Deskmark.svg"))));
    if (!japanese)
        return;
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_ja"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    } else {
        systemLog(QStringLiteral("Deskmark: Qt の日本語訳（qtbase_ja）が見つかりません"));
        delete translator;
    }
}

} // namespace deskmark
