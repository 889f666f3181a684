// The command-line examples of README.md, run one after the other in a folder of their own
// and compared with the output the README shows, so that they cannot go stale.
//
// Between the two markers, an indented line "$ command" is run with bash (lumidot-cli on the
// PATH), and the indented lines after it are what it prints, standard error included. An
// indented block right after "<!-- example file NAME -->" is written to the file NAME first.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "cli/cli_run.h"

namespace lumidot::testing {
namespace {

constexpr char kBegin[] = "<!-- cli examples:";
constexpr char kEnd[] = "<!-- end of cli examples -->";
constexpr char kFile[] = "<!-- example file ";
constexpr char kIndent[] = "    ";

struct Example {
    QString command;
    QString output;
};

struct Examples {
    std::vector<std::pair<QString, QString>> files;  // name, content
    std::vector<Example> commands;
};

Examples ReadExamples() {
    QFile readme(QStringLiteral(LUMIDOT_README));
    EXPECT_TRUE(readme.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString text = QString::fromUtf8(readme.readAll());
    const qsizetype begin = text.indexOf(QLatin1String(kBegin));
    const qsizetype end = text.indexOf(QLatin1String(kEnd));
    EXPECT_GE(begin, 0) << "README.md has lost its example markers";
    EXPECT_GT(end, begin);
    Examples examples;
    if (begin < 0 || end < begin) return examples;

    QString* output = nullptr;
    QString pendingFile;
    for (const QString& line : text.mid(begin, end - begin).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String(kFile))) {
            pendingFile = line.mid(qsizetype(sizeof kFile) - 1).chopped(4).trimmed();
            examples.files.push_back({pendingFile, QString()});
            output = &examples.files.back().second;
            continue;
        }
        if (!line.startsWith(QLatin1String(kIndent))) {
            // Prose ends an output; the blank line after a file marker does not end the file.
            if (!(line.isEmpty() && !pendingFile.isEmpty() && output && output->isEmpty())) {
                output = nullptr;
                pendingFile.clear();
            }
            continue;
        }
        const QString content = line.mid(4);
        if (content.startsWith(QLatin1String("$ "))) {
            examples.commands.push_back({content.mid(2), QString()});
            output = &examples.commands.back().output;
            pendingFile.clear();
        } else if (output) {
            *output += content + QLatin1Char('\n');
        } else {
            ADD_FAILURE() << "indented line outside an example: " << content.toStdString();
        }
    }
    return examples;
}

TEST(ReadmeExamplesTest, EveryExampleGivesTheOutputShown) {
    const Examples examples = ReadExamples();
    ASSERT_GE(examples.commands.size(), 10u);
    ASSERT_EQ(examples.files.size(), 1u);
    QTemporaryDir folder;
    for (const auto& [name, content] : examples.files) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.toUtf8());
    }
    const QString path = QFileInfo(QStringLiteral(LUMIDOT_CLI_PATH)).absolutePath() +
                         QLatin1Char(':') + qEnvironmentVariable("PATH");
    for (const Example& example : examples.commands) {
        // As typed in a terminal: one shell, standard error shown where it comes.
        const CliRun run = RunShell(folder.path(), example.command, path);
        EXPECT_EQ(run.out, example.output) << "$ " << example.command.toStdString();
    }
}

}  // namespace
}  // namespace lumidot::testing
