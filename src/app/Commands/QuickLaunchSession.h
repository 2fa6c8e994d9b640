#pragma once
// What the quick launch of one window offers and what taking a row does. It lists the
// registry's repositories, every command of the menus (the command table's entries with
// the tab's enabled state, and the window's own menu actions) and the custom commands.
// A command that takes arguments asks for them one by one with the provider of each
// argument's type (a branch for Checkout, a file for Blame) before it runs; it runs the
// way its menu entry runs it.
#include <QObject>
#include <QPointer>
#include <QHash>
#include <memory>
#include <optional>

#include "Commands/CommandContext.h"
#include "Commands/CommandDescriptor.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "QuickLaunch/CommandProvider.h"

class JelvDocumentController;
class JelvMainWindow;
class QAction;

class QuickLaunchSession : public QObject {
  Q_OBJECT

 public:
  QuickLaunchSession(JelvMainWindow* window, JelvDocumentController& documents, QObject* parent = nullptr);
  ~QuickLaunchSession() override;

  CommandProvider* provider() const { return provider_.get(); }
  // The text field's hint: what the current list is for.
  QString placeholder() const { return placeholder_; }
  // Waiting for git's file list.
  bool isLoading() const { return loading_; }
  // A message instead of the list (the file list could not be read).
  QString problem() const { return problem_; }

  // Whether taking the row does anything: no header, no disabled command.
  bool canTake(const CommandProviderItem& item) const;

  enum class Outcome { done, nextArgument, ignored };
  // Takes a row of the current list: opens or runs it (done), or brings up the list of
  // the command's next argument. A header or a disabled command is ignored.
  Outcome take(const CommandProviderItem& item);

  // Whether the palette can give a table entry what it needs: its arguments it asks for,
  // the rest must come from the tab (the checked-out branch, the selected commits).
  static bool isOffered(const CommandDescriptor& descriptor);

 Q_SIGNALS:
  // A new list: the next argument's, or the file list that arrived.
  void providerChanged();

 private:
  void buildFirstProvider();
  Outcome askNextArgument();
  void run();
  std::vector<QuickLaunchCommand> menuCommands();

  QPointer<JelvMainWindow> window_;
  JelvDocumentController& documents_;
  std::unique_ptr<CommandProvider> provider_;
  QString placeholder_;
  bool loading_ = false;
  QString problem_;

  // The tab in front when the palette opened, with its selection.
  CommandContext context_;
  QHash<QString, QPointer<QAction>> menuActions_;  // "menu:<object name>"
  CustomCommandList customCommands_;                // "custom:<index>"
  // The command asking for its arguments, and the next one to ask.
  const CommandDescriptor* pending_ = nullptr;
  size_t nextArgument_ = 0;
};
