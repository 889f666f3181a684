// Two windows on the same two files in one process, as two copies of the program would
// be, and what a killed save leaves behind.
#include <QApplication>

#include "storage/window/persistence_fixture.h"

namespace lumidot::testing {
namespace {

class SecondCopyTest : public PersistenceTest {
protected:
    // A second window on the same folder, answering the question with answer.
    std::unique_ptr<MainForm> startSecond(Prompts::Answer answer) {
        fake.prompts.answers = {answer};
        auto second = std::make_unique<MainForm>(fake.platform, folder.path());
        second->Form_Load();
        return second;
    }
    QStringList entries() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
};

TEST_F(SecondCopyTest, IsAskedAtOnceAndOpenedReadOnlySavesNothing) {
    ui().txtHexPrefix->setText("A");
    restart();
    const QByteArray memory = ReadAll(file("memory.txt"));
    const QByteArray settings = ReadAll(file("settings.bin"));

    std::unique_ptr<MainForm> second = startSecond(Prompts::Answer::ReadOnly);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& question = fake.prompts.shown[0];
    EXPECT_EQ(question.title, "Lumidot is already running");
    EXPECT_EQ(question.buttons, Prompts::Buttons::ReadOnlyOrQuit);
    EXPECT_TRUE(question.prompt.contains(folder.path())) << question.prompt.toStdString();
    EXPECT_TRUE(question.prompt.contains(QString::number(QCoreApplication::applicationPid())));
    EXPECT_EQ(second->windowTitle(), window->windowTitle() + " [Read-Only]");
    EXPECT_EQ(second->form().txtHexPrefix->text(), "A") << "it shows the saved work";

    second->form().txtHexPrefix->setText("B");
    second->SetFDPixelColAll(DotPage(3));
    second->close();
    EXPECT_EQ(ReadAll(file("memory.txt")), memory);
    EXPECT_EQ(ReadAll(file("settings.bin")), settings);

    ui().txtHexSuffix->setText("h");
    close();
    EXPECT_EQ(ReadAll(file("settings.bin")).mid(4, 1), "A");
    EXPECT_EQ(ReadAll(file("settings.bin")).mid(9, 1), "h") << "the first copy still saves";
    takePrompts();
    start();
    EXPECT_TRUE(fake.prompts.shown.empty()) << "with the first copy gone, nothing is asked";
}

TEST_F(SecondCopyTest, QuitEndsItWithoutTouchingEitherFile) {
    std::unique_ptr<MainForm> second = startSecond(Prompts::Answer::Quit);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    QApplication::processEvents();
    EXPECT_FALSE(second->isVisible());
    EXPECT_FALSE(QFile::exists(file("memory.txt")));
    EXPECT_FALSE(QFile::exists(file("settings.bin")));
    EXPECT_EQ(fake.prompts.shown.size(), 1u) << "and says nothing more";

    close();
    EXPECT_TRUE(QFile::exists(file("memory.txt"))) << "the first copy saves as ever";
}

TEST_F(SecondCopyTest, LeftoversOfAKilledSaveAreRemovedByTheCopyHoldingTheLockOnly) {
    window.reset();
    const QStringList leftovers{"settings.bin.aB3xYz", "memory.txt.Q7k2Lm"};
    for (const QString& name : leftovers) WriteAll(folder.filePath(name), "half a save");
    WriteAll(file("memory.txt.backup"), "the user's own");
    start();
    for (const QString& name : leftovers)
        EXPECT_FALSE(entries().contains(name)) << name.toStdString();
    EXPECT_TRUE(entries().contains("memory.txt.backup"));

    // A save of the first copy may be under way: the second must leave its files alone.
    for (const QString& name : leftovers) WriteAll(folder.filePath(name), "half a save");
    std::unique_ptr<MainForm> second = startSecond(Prompts::Answer::ReadOnly);
    for (const QString& name : leftovers)
        EXPECT_TRUE(entries().contains(name)) << name.toStdString();
}

}  // namespace
}  // namespace lumidot::testing
