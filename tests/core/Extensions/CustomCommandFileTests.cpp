#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "Models/CustomCommands/CustomCommandCoder.h"

namespace {
CustomCommandList decode(const char* json, bool shared = false) {
  return CustomCommandCoder::decodeList(QByteArray(json), shared);
}
}  // namespace

TEST(CustomCommandCoder, EachElementStandsAlone) {
  const auto commands = decode(R"([
    {"target": "repository", "name": "Open shell",
     "action": {"type": "process", "path": "/bin/sh", "args": "-c $REPO", "showOutput": true, "waitForExit": false}},
    {"target": "revision", "name": "No showOutput",
     "action": {"type": "process", "path": "/bin/sh", "args": "", "waitForExit": true}},
    {"target": "file", "name": "Unknown type", "action": {"type": "telnet"}},
    {"target": "branch", "name": "Bad target", "action": {"type": "cancel"}},
    {"target": "file", "action": {"type": "cancel"}},
    "not an object",
    {"target": "revision", "name": "Browse", "referenceTargets": ["tag"], "action": {"type": "url", "url": "https://x.invalid/$SHA"}},
    {"target": "file", "name": "Unknown type with a dialog", "action": {"type": "telnet"},
     "ui": {"title": "T", "description": "D", "buttons": [{"title": "Close", "action": {"type": "cancel"}}]}}
  ])");
  ASSERT_EQ(commands.size(), 3u);

  const auto& shell = *commands[0];
  EXPECT_EQ(shell.name, "Open shell");
  ASSERT_TRUE(shell.action);
  const auto* process = dynamic_cast<const ProcessCustomCommandAction*>(shell.action.get());
  ASSERT_TRUE(process);
  EXPECT_EQ(process->parameters, "-c $REPO");  // "args" in the file
  EXPECT_TRUE(process->showOutput);
  EXPECT_FALSE(process->waitForExit);

  EXPECT_EQ(commands[1]->name, "Browse");
  EXPECT_EQ(commands[2]->name, "Unknown type with a dialog");
  EXPECT_FALSE(commands[2]->action);
  ASSERT_TRUE(commands[2]->ui);
  EXPECT_EQ(commands[2]->ui->buttons.size(), 1u);

  // A root that is no array gives nothing (a broken file: see the manager's tests).
  EXPECT_TRUE(decode(R"({"target": "file", "name": "x", "action": {"type": "cancel"}})").empty());

  // Encoding reads back and writes only its own keys.
  const QByteArray json = CustomCommandCoder::encodeList(commands);
  const auto again = CustomCommandCoder::decodeList(json, false);
  ASSERT_EQ(again.size(), 3u);
  EXPECT_EQ(*again[0], *commands[0]);
  EXPECT_EQ(*again[2], *commands[2]);
  const QJsonArray array = QJsonDocument::fromJson(json).array();
  EXPECT_EQ(array[0].toObject().value("action").toObject().keys(), (QStringList{"args", "path", "showOutput", "type", "waitForExit"}));
  const QJsonObject button = array[2].toObject().value("ui").toObject().value("buttons").toArray()[0].toObject();
  EXPECT_EQ(button.value("action").toObject().keys(), QStringList{"type"});
  // Kinds of reference are written for reference commands only, and "shared" never.
  EXPECT_FALSE(array[1].toObject().contains("referenceTargets"));
  EXPECT_FALSE(array[0].toObject().contains("shared"));
  EXPECT_TRUE(json.contains("\n    "));  // pretty-printed
}

TEST(CustomCommandCoder, ActionAndDialogBothLoadAndBadButtonsDropOut) {
  const auto commands = decode(R"([
    {"target": "reference", "name": "Both", "referenceTargets": ["tag", "stash", 3, "localBranch"],
     "action": {"type": "url", "url": "u"},
     "ui": {"title": "Sure?", "description": "Really", "buttons": [
        {"title": "Go", "action": {"type": "url", "url": "v"}},
        {"title": "Broken", "action": {"type": "process", "path": "p"}},
        {"action": {"type": "cancel"}},
        {"title": "Cancel", "action": {"type": "cancel"}}]}},
    {"target": "reference", "name": "Nowhere", "referenceTargets": ["stash"], "action": {"type": "cancel"}},
    {"target": "file", "name": "Dialog without description",
     "ui": {"title": "T", "buttons": []}}
  ])", true);
  ASSERT_EQ(commands.size(), 2u);
  const auto& both = *commands[0];
  EXPECT_TRUE(both.shared);
  ASSERT_TRUE(both.action && both.ui);
  ASSERT_EQ(both.ui->buttons.size(), 2u);
  EXPECT_EQ(both.ui->buttons[0].title, "Go");
  EXPECT_EQ(both.ui->buttons[1].title, "Cancel");
  EXPECT_EQ(both.referenceTargets,
            (std::vector{CustomCommand::ReferenceTarget::tag, CustomCommand::ReferenceTarget::localBranch}));
  EXPECT_TRUE(both.appliesTo(CustomCommand::ReferenceTarget::tag));
  EXPECT_FALSE(both.appliesTo(CustomCommand::ReferenceTarget::remoteBranch));

  // Only unknown kinds: an empty list (not an absent one), so no reference shows it.
  ASSERT_TRUE(commands[1]->referenceTargets.has_value());
  EXPECT_TRUE(commands[1]->referenceTargets->empty());
}
