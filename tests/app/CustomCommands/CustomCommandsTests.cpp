#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include "Commands/CommandContext.h"
#include "Commands/CommandTable.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/RepositoryCustomCommandsController.h"
#include "Controls/GitOutputView.h"
#include "Commands/RunCustomCommandCommand.h"
#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Preferences/PreferencesWindowController.h"
#include "Repository/RepositoryController.h"
#include "Models/AppSettings.h"
#include "Models/GitModuleSettings.h"
#include "Models/Sha.h"
#include "Services/CustomCommandManager.h"
#include "UI/CustomCommands/CustomCommandListController.h"
#include "UI/CustomCommands/CustomCommandUIWindowController.h"
#include "UI/CustomCommands/EditCustomCommandActionWindowController.h"
#include "UI/CustomCommands/EditCustomCommandWindowController.h"
#include "UI/JelvDocument.h"
#include "support/RepositoryTab.h"
#include "support/TempRepository.h"

namespace {

QString q(const char* text) { return QString::fromUtf8(text); }

class CustomCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    CustomCommandManager::shared().setCustomCommands({});
    head = repo.commitFile(q("a.txt"), "a\n", q("first"));
    // A program in a folder with a blank; it writes where it ran and what it got.
    tool = tools.filePath(q("record args.sh"));
    QFile file(tool);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nprintf '%s\\n' \"$PWD\" \"$@\" > ran.txt\necho recorded\n");
    file.close();
    file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
  }
  void TearDown() override { CustomCommandManager::shared().setCustomCommands({}); }

  // The commit list's context menu as it opens on the selected commit.
  static std::unique_ptr<QMenu> commitMenu(JelvDocument& view) {
    auto menu = std::make_unique<QMenu>();
    Q_EMIT view.displayController()->contextMenuOpening(menu.get());
    return menu;
  }

  static QAction* customEntry(QMenu& menu, const QString& name) {
    for (QAction* action : menu.findChildren<QAction*>(q("customCommand"))) {
      if (action->text() == name) return action;
    }
    return nullptr;
  }

  TempRepository repo{true, q("my repo")};
  QTemporaryDir tools;
  QString tool;
  QString head;
};

}  // namespace

// A command added in the preferences is saved to the global file and appears in the
// commit list's menu; running it runs the program in the work tree with the commit.
TEST_F(CustomCommands, CommandFromThePreferencesRunsFromTheCommitMenu) {
  QTemporaryDir dbDir;
  AppSettings settings(dbDir.filePath(q("db.sqlite3")));
  PreferencesWindowController preferences(settings);
  preferences.show();
  CustomCommandListController* list = preferences.customCommands();
  ASSERT_TRUE(list);

  EditCustomCommandWindowController* editor = list->addCommand();
  ASSERT_TRUE(editor);
  EXPECT_EQ(editor->nameField()->text(), q("Repository Custom Command"));
  editor->targetBox()->setCurrentIndex(editor->targetBox()->findText(q("Commit")));
  EXPECT_EQ(editor->nameField()->text(), q("Revision Custom Command"));  // an untouched name follows
  EXPECT_TRUE(editor->variablesLabel()->text().contains(q("<code>$sha</code></td><td>&nbsp;&nbsp;commit abbreviated sha")));
  editor->actionEditor()->pathField()->setText(tools.filePath(q("missing.sh")));
  editor->accept();
  EXPECT_TRUE(editor->isVisible());
  EXPECT_EQ(editor->errorLabel()->text(), q("Script path not found"));

  editor->nameField()->setText(q("Record"));
  editor->actionEditor()->pathField()->setText(tool);
  editor->actionEditor()->parametersField()->setText(q("$sha $reponame"));
  editor->accept();
  // Saved to the global file: CustomCommandManager's and the file's core tests.
  ASSERT_EQ(CustomCommandManager::shared().customCommands().size(), 1u);

  auto view = openTab(repo.module());
  ASSERT_TRUE(view->commitList()->selectSha(*Sha::fromHex(head)));
  auto menu = commitMenu(*view);
  QAction* record = customEntry(*menu, q("Record"));
  ASSERT_TRUE(record);
  record->trigger();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(repo.path() + q("/ran.txt")); }, 20000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return repo.readFile(q("ran.txt")).count('\n') == 3; }, 5000));
  EXPECT_EQ(QString::fromUtf8(repo.readFile(q("ran.txt"))), repo.path() + q("\n") + head.left(7) + q("\nmy repo\n"));

  // Removed again (after the question), it leaves the menu.
  list->list()->setCurrentItem(list->list()->topLevelItem(0));
  list->removeSelected();
  ASSERT_TRUE(confirm(&preferences));
  EXPECT_TRUE(CustomCommandManager::shared().customCommands().empty());
  EXPECT_FALSE(customEntry(*commitMenu(*view), q("Record")));
}

// A command that came with the repository runs only after the trust question; declined
// it runs nothing, accepted with the box on it is not asked again.
TEST_F(CustomCommands, SharedCommandAsksForTrustFirst) {
  repo.writeFile(q(".jelv/custom-commands.json"),
                 QStringLiteral(R"([{"target": "repository", "name": "Shared", "action":
                   {"type": "process", "path": "%1", "args": "$repository", "showOutput": false, "waitForExit": true}}])")
                     .arg(tool)
                     .toUtf8());
  auto view = openTab(repo.module());
  const CommandContext context = CommandContext::forRepository(view.get());
  const CustomCommandList commands = RunCustomCommandCommand::commands(context, CustomCommand::Target::repository);
  ASSERT_EQ(commands.size(), 1u);

  const auto question = [&] {
    QMessageBox* box = nullptr;
    QTest::qWaitFor([&] {
      box = view->window()->findChild<QMessageBox*>(q("runSharedCustomCommandConfirmation"));
      return box && box->isVisible();
    }, 5000);
    return box;
  };
  RunCustomCommandCommand::execute(context, commands.front());
  QMessageBox* box = question();
  ASSERT_TRUE(box);
  EXPECT_EQ(box->text(), q("The custom command has come from the 'my repo' repository"));
  box->button(QMessageBox::Cancel)->click();
  QTest::qWait(300);
  EXPECT_FALSE(QFile::exists(repo.path() + q("/ran.txt")));

  RunCustomCommandCommand::execute(context, commands.front());
  box = question();
  ASSERT_TRUE(box);
  box->checkBox()->setChecked(true);
  box->findChild<QPushButton*>(q("confirmButton"))->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(repo.path() + q("/ran.txt")); }, 20000));
  EXPECT_TRUE(GitModuleSettings::load(repo.module()).trustSharedCommands);

  QFile::remove(repo.path() + q("/ran.txt"));
  RunCustomCommandCommand::execute(context, commands.front());
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(repo.path() + q("/ran.txt")); }, 20000));
  EXPECT_FALSE(view->window()->findChild<QMessageBox*>(q("runSharedCustomCommandConfirmation")));
}

// The repository's sheet moves a shared command to the clone's own file: saved, the
// committed file goes and the command no longer counts as shared.
TEST_F(CustomCommands, RepositorySheetMovesASharedCommandToTheLocalFile) {
  repo.writeFile(q(".jelv/custom-commands.json"),
                 QByteArray(R"([{"target": "file", "name": "Team", "action": {"type": "url", "url": "https://x.invalid/$filepath"}}])"));
  auto view = openTab(repo.module());
  ASSERT_TRUE(CommandTable::run(q("repositoryCustomCommands"), CommandContext::forRepository(view.get())));
  auto* sheet = openSheet<RepositoryCustomCommandsController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_FALSE(sheet->submitButton()->isEnabled());  // nothing to save yet
  sheet->list()->list()->setCurrentItem(sheet->list()->list()->topLevelItem(0));
  EditCustomCommandWindowController* editor = sheet->list()->editSelected();
  ASSERT_TRUE(editor);
  auto* storage = editor->findChild<QComboBox*>(q("storage"));
  ASSERT_TRUE(storage);
  EXPECT_EQ(storage->currentIndex(), 1);
  storage->setCurrentIndex(0);
  editor->accept();
  ASSERT_TRUE(sheet->submitButton()->isEnabled());
  sheet->submitButton()->click();

  ASSERT_TRUE(QTest::qWaitFor([&] {
    const RepositoryDataPtr data = view->controller()->repositoryData();
    return data && data->customCommands.size() == 1 && !data->customCommands.front()->shared;
  }, 20000));
  EXPECT_FALSE(QFile::exists(repo.path() + q("/.jelv/custom-commands.json")));
  EXPECT_TRUE(repo.readFile(q(".git/jelv/custom-commands.json")).contains("\"Team\""));
}

// A command with a dialog: its texts and first button with the branch's variables; the
// second button does what it says (here: nothing), the first runs the program.
TEST_F(CustomCommands, DialogButtonsRunTheirOwnActions) {
  repo.git({q("branch"), q("topic")});
  auto command = std::make_shared<CustomCommand>();
  command->target = CustomCommand::Target::reference;
  command->name = q("Ask");
  auto ui = std::make_shared<CustomCommandUI>();
  ui->title = q("Record '$shortname'?");
  ui->description = q("At $sha");
  ui->buttons = {{q("Record $name"), std::make_shared<ProcessCustomCommandAction>(tool, q("$fullreference"), false, true)},
                 {q("Not Now"), std::make_shared<CancelCustomCommandAction>()}};
  command->ui = ui;
  CustomCommandManager::shared().setCustomCommands({command});

  auto view = openTab(repo.module());
  CommandContext context = CommandContext::forRepository(view.get());
  context.reference = view->controller()->repositoryData()->references.reference(q("refs/heads/topic"));
  ASSERT_TRUE(context.reference);
  const auto dialog = [&] { return openSheet<CustomCommandUIWindowController>(view->window()); };
  const CustomCommandList commands = RunCustomCommandCommand::commands(context, CustomCommand::Target::reference);
  ASSERT_EQ(commands.size(), 1u);
  RunCustomCommandCommand::execute(context, commands.front());
  CustomCommandUIWindowController* sheet = dialog();
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->messageLabel()->text(), q("Record 'topic'?"));
  EXPECT_EQ(sheet->informativeLabel()->text(), q("At ") + head.left(7));
  EXPECT_EQ(sheet->submitButton()->text(), q("Record topic"));
  EXPECT_EQ(sheet->cancelButton()->text(), q("Not Now"));
  sheet->cancelButton()->click();
  QTest::qWait(300);
  EXPECT_FALSE(QFile::exists(repo.path() + q("/ran.txt")));

  RunCustomCommandCommand::execute(context, commands.front());
  sheet = dialog();
  ASSERT_TRUE(sheet);
  sheet->submitButton()->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return repo.readFile(q("ran.txt")).count('\n') == 2; }, 20000));
  EXPECT_EQ(QString::fromUtf8(repo.readFile(q("ran.txt"))), repo.path() + q("\nrefs/heads/topic\n"));
}

// A program that fails shows the error sheet under the command's name, with the status
// and what the program said.
TEST_F(CustomCommands, AFailingProgramShowsWhatItSaid) {
  repo.writeExecutable(q("fail.sh"), "#!/bin/sh\necho 'nothing to record' >&2\nexit 3\n");
  auto command = std::make_shared<CustomCommand>();
  command->name = q("Check");
  command->action = std::make_shared<ProcessCustomCommandAction>(q("$path/fail.sh"), QString(), true, true);
  auto view = openTab(repo.module());
  RunCustomCommandCommand::execute(CommandContext::forRepository(view.get()), command);
  auto* sheet = openSheet<ErrorWindowController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->messageLabel()->text(), q("Check failed"));
  const QString text = sheet->errorTextView()->toPlainText();
  EXPECT_TRUE(text.contains(q("exited with status 3")) && text.contains(q("nothing to record"))) << text.toStdString();
}
