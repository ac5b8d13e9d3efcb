#include "core/app/CommandLine.h"

#include "core/app/Language.h"

#include <array>

namespace deskmark {

namespace {

struct CommandWord {
    const char* word;
    HotKeyAction action;
    const char* japanese; // the --help line
    const char* english;
};

// The command words, in the order --help lists them; each runs what its hot key runs.
constexpr std::array<CommandWord, 5> kCommandWords{{
    {"switcher", HotKeyAction::Switcher,
     "Space スイッチャーを開く（開いていれば次の Space を選ぶ）",
     "open the Space switcher (select the next Space when it is open)"},
    {"bookmarks", HotKeyAction::Bookmark,
     "現在のプロジェクトのブックマークを開く（開いていれば閉じる）",
     "open the current project's bookmarks (close them when open)"},
    {"rename", HotKeyAction::Name, "現在の Space の名前と色を編集する",
     "edit the current Space's name and colour"},
    {"settings", HotKeyAction::Settings, "設定ウインドウを開く", "open the settings window"},
    {"next-preset", HotKeyAction::Preset,
     "現在の Space のプロジェクトに次のカラープリセットを適用する",
     "give the current Space's project the next colour preset"},
}};

const QString kSwitchWord = QStringLiteral("switch");

bool isOption(const QString& argument) {
    return argument.size() > 1 && argument.startsWith(QLatin1Char('-'));
}

bool isHelp(const QString& argument) {
    return argument == QLatin1String("-h") || argument == QLatin1String("--help");
}

// One help line: the term padded to a column, then its description.
QString helpLine(const QString& term, const QString& description) {
    return QStringLiteral("  ") + term.leftJustified(16) + QLatin1Char(' ') + description +
           QLatin1Char('\n');
}

} // namespace

QString CommandLine::commandWord(HotKeyAction action) {
    for (const CommandWord& command : kCommandWords) {
        if (command.action == action)
            return QString::fromLatin1(command.word);
    }
    return {};
}

CommandLine CommandLine::invalid(QString error) {
    CommandLine command;
    command.mode_ = Mode::Invalid;
    command.error_ = std::move(error);
    return command;
}

CommandLine CommandLine::parse(const QStringList& arguments) {
    CommandLine command;
    if (arguments.isEmpty())
        return command;
    // Asking for help wins wherever it stands, up to a "--" that ends the options.
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("--"))
            break;
        if (isHelp(argument)) {
            command.mode_ = Mode::Help;
            return command;
        }
    }
    const QString& first = arguments.first();
    QStringList rest = arguments.mid(1);
    const auto unexpected = [](const QString& argument) {
        return isOption(argument)
                   ? invalid(
                         localized("不明なオプション「%1」", "unknown option '%1'").arg(argument))
                   : invalid(
                         localized("余分な引数「%1」", "unexpected argument '%1'").arg(argument));
    };

    if (first == QLatin1String("--version") || first == QLatin1String("--diagnose")) {
        if (!rest.isEmpty())
            return unexpected(rest.first());
        command.mode_ = first == QLatin1String("--version") ? Mode::Version : Mode::Diagnose;
        return command;
    }
    if (isOption(first))
        return unexpected(first);

    if (first == kSwitchWord) {
        // "--" lets a name begin with a dash.
        const bool literal = !rest.isEmpty() && rest.first() == QLatin1String("--");
        if (literal)
            rest.removeFirst();
        if (rest.isEmpty() || rest.first().isEmpty())
            return invalid(
                localized("switch にはプロジェクト名が必要です", "switch needs a project name"));
        if (!literal && isOption(rest.first()))
            return unexpected(rest.first());
        if (rest.size() > 1)
            return unexpected(rest.at(1));
        command.mode_ = Mode::Switch;
        command.projectName_ = rest.first();
        return command;
    }
    for (const CommandWord& word : kCommandWords) {
        if (first != QLatin1String(word.word))
            continue;
        if (!rest.isEmpty())
            return unexpected(rest.first());
        command.mode_ = Mode::Action;
        command.action_ = word.action;
        return command;
    }
    return invalid(localized("不明なコマンド「%1」", "unknown command '%1'").arg(first));
}

QString CommandLine::usageErrorText() const {
    return QStringLiteral("deskmark: ") + error_ + QLatin1Char('\n') +
           localized("使い方は 'deskmark --help' で表示できます。\n",
                     "Try 'deskmark --help' for more information.\n");
}

QString CommandLine::helpText() {
    QString text = localized(
        "使い方: deskmark [コマンド]\n"
        "        deskmark --help | --version | --diagnose\n\n"
        "コマンドなしでは、このセッションの Deskmark を起動します（ユーザーごとに 1 つ）。\n"
        "コマンドは起動中の Deskmark に動作を頼んで終了します。\n\n"
        "コマンド:\n",
        "Usage: deskmark [COMMAND]\n"
        "       deskmark --help | --version | --diagnose\n\n"
        "Without a command, starts Deskmark for this session (one per user).\n"
        "A command asks the running Deskmark to act, then ends.\n\n"
        "Commands:\n");
    for (const CommandWord& word : kCommandWords)
        text += helpLine(QLatin1String(word.word), localized(word.japanese, word.english));
    text += helpLine(
        localized("switch 名前", "switch NAME"),
        localized(
            "プロジェクト名が「名前」の最初の Space に切り替える（大文字と小文字は区別しない）",
            "switch to the first Space whose project is called NAME "
            "(letter case does not matter)"));
    text += localized("\nオプション:\n", "\nOptions:\n");
    text += helpLine(QStringLiteral("-h, --help"),
                     localized("このヘルプを表示して終了する", "print this help and exit"));
    text += helpLine(QStringLiteral("--version"),
                     localized("バージョンを表示して終了する", "print the version and exit"));
    text += helpLine(QStringLiteral("--diagnose"),
                     localized("ディスプレイ、Space とプロジェクトを JSON で表示して終了する",
                               "print the displays, their Spaces and projects as JSON and exit"));
    text += localized(
        "\n終了ステータス: 0 成功、1 Deskmark が起動していないか該当なし、2 使い方の誤り\n"
        "環境変数: SW_DEBUG があると Space の切り替えの各段階を /tmp/swdbg.log に記録します。\n",
        "\nExit status: 0 done, 1 Deskmark is not running or nothing matched, "
        "2 usage error.\n"
        "Environment: with SW_DEBUG set, each step of a Space switch is appended to "
        "/tmp/swdbg.log.\n");
    return text;
}

QString CommandLine::versionText() {
    return QStringLiteral("Deskmark " DESKMARK_VERSION "\n");
}

CommandLine::Report CommandLine::report(Reply reply, const QString& detail) const {
    switch (reply) {
    case Reply::Done:
        return {kExitOK, QString()};
    case Reply::NotRunning:
        return {kExitFailure,
                localized("Deskmark は起動していません。\n", "Deskmark is not running.\n")};
    case Reply::NoMatch:
        return {kExitFailure, localized("プロジェクト名が「%1」の Space はありません。\n",
                                        "No Space has a project called \"%1\".\n")
                                  .arg(projectName_)};
    case Reply::Failed:
        break;
    }
    return {kExitFailure, localized("Deskmark はコマンドを実行できませんでした: %1\n",
                                    "Deskmark could not carry out the command: %1\n")
                              .arg(detail)};
}

} // namespace deskmark
