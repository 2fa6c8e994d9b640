#include "Commands/QuickLaunchSession.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "Commands/CommandTable.h"
#include "Controllers/QueuedWork.h"
#include "Models/AppSettings.h"
#include "QuickLaunch/DefaultCommandProvider.h"
#include "QuickLaunch/ReferenceCommandProvider.h"
#include "QuickLaunch/RepositoryFileCommandProvider.h"
#include "Commands/RunCustomCommandCommand.h"
#include "UI/JelvDocument.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"

namespace {

using Needs = CommandContext::Needs;
using Type = CommandDescriptor::ArgumentType;

int bits(Needs needs) { return static_cast<int>(needs); }

// What an argument of this type puts into the context once chosen.
int suppliedNeeds(Type type) {
  switch (type) {
    case Type::repositoryFile: return bits(Needs::paths);
    case Type::reference:
    case Type::branch: return bits(Needs::reference);
    case Type::tag: return bits(Needs::tag) | bits(Needs::reference);
    case Type::remoteBranch: return bits(Needs::remoteBranch) | bits(Needs::reference);
    case Type::localBranch:
    case Type::gitflowFeature:
    case Type::gitflowHotfix:
    case Type::gitflowRelease: return bits(Needs::localBranch) | bits(Needs::reference);
    case Type::defaultType: break;
  }
  return 0;
}

struct ReferenceChoice {
  ReferenceCommandProvider::Kinds kinds;
  QString header;
  QString noun;
};

ReferenceChoice referenceChoice(Type type) {
  using Kinds = ReferenceCommandProvider::Kinds;
  switch (type) {
    case Type::tag: return {Kinds::tags, QStringLiteral("Tags"), QStringLiteral("a tag")};
    case Type::branch: return {Kinds::branches, QStringLiteral("Branches"), QStringLiteral("a branch")};
    case Type::remoteBranch: return {Kinds::remoteBranches, QStringLiteral("Remote Branches"), QStringLiteral("a remote branch")};
    case Type::localBranch:
    case Type::gitflowFeature:
    case Type::gitflowHotfix:
    case Type::gitflowRelease: return {Kinds::localBranches, QStringLiteral("Branches"), QStringLiteral("a branch")};
    default: return {Kinds::all, QStringLiteral("References"), QStringLiteral("a branch or tag")};
  }
}

QString keysText(const QKeySequence& keys) { return keys.toString(QKeySequence::NativeText); }

}  // namespace

QuickLaunchSession::QuickLaunchSession(JelvMainWindow* window, JelvDocumentController& documents, QObject* parent)
    : QObject(parent), window_(window), documents_(documents) {
  const JelvWindowController* front = window ? window->currentTab() : nullptr;
  context_ = CommandContext::forRepository(front ? front->document() : nullptr);
  context_.window = window;
  buildFirstProvider();
}

QuickLaunchSession::~QuickLaunchSession() = default;

bool QuickLaunchSession::isOffered(const CommandDescriptor& descriptor) {
  if (descriptor.needs == Needs::nothing) return false;  // the window's own, like the palette itself
  int supplied = 0;
  for (const CommandDescriptor::Argument& argument : descriptor.arguments) supplied |= suppliedNeeds(argument.type);
  const int fromTab = bits(Needs::repository) | bits(Needs::activeBranch) | bits(Needs::revision);
  const int rest = bits(descriptor.needs) & ~(supplied & ~bits(Needs::repository));
  return (rest & ~fromTab) == 0;
}

std::vector<QuickLaunchCommand> QuickLaunchSession::menuCommands() {
  // The menus in their order. An entry of the command table stands as the table's entry,
  // with its own enabled state; the table's entries that only context menus show follow.
  std::vector<QuickLaunchCommand> commands;
  QSet<QString> listed;
  const auto addEntry = [&](const CommandDescriptor& descriptor) {
    if (listed.contains(descriptor.identifier) || !isOffered(descriptor)) return;
    listed.insert(descriptor.identifier);
    CommandContext probe = context_;
    // With arguments still to choose, the entry's own condition is tested on each choice.
    const bool enabled = descriptor.arguments.empty() ? descriptor.isAvailable(probe) : probe.satisfies(Needs::repository);
    commands.push_back({QStringLiteral("table:") + descriptor.identifier, CommandTable::paletteName(descriptor), keysText(descriptor.shortcut), enabled});
  };
  std::function<void(QMenu*)> walk = [&](QMenu* menu) {
    Q_EMIT menu->aboutToShow();  // menus filled when they open
    for (QAction* action : menu->actions()) {
      if (action->menu()) {
        walk(action->menu());
        continue;
      }
      if (action->isSeparator() || !action->isVisible() || action->objectName().isEmpty()) continue;
      QString identifier = action->objectName();
      if (identifier.endsWith(QStringLiteral("Action"))) identifier.chop(int(qstrlen("Action")));
      if (const CommandDescriptor* descriptor = CommandTable::find(identifier)) {
        addEntry(*descriptor);
        continue;
      }
      const QString key = QStringLiteral("menu:") + action->objectName();
      if (menuActions_.contains(key)) continue;
      menuActions_.insert(key, action);
      QString title = action->text();
      title.remove(QLatin1Char('&'));
      commands.push_back({key, title, keysText(action->shortcut()), action->isEnabled()});
    }
  };
  if (window_) {
    for (QAction* top : window_->menuBar()->actions()) {
      if (top->menu()) walk(top->menu());
    }
  }
  for (const CommandDescriptor& descriptor : CommandTable::all()) addEntry(descriptor);
  return commands;
}

void QuickLaunchSession::buildFirstProvider() {
  std::vector<QuickLaunchCommand> customs;
  // Those on the repository as a whole: the others act on a chosen commit, file or branch.
  if (context_.satisfies(Needs::repository)) customCommands_ = RunCustomCommandCommand::commands(context_, CustomCommand::Target::repository);
  for (size_t i = 0; i < customCommands_.size(); ++i) {
    const CustomCommand& command = *customCommands_[i];
    customs.push_back({QStringLiteral("custom:%1").arg(i), command.name, command.shared ? tr("This repository") : QString(), true});
  }
  provider_ = std::make_unique<DefaultCommandProvider>(documents_.registry().getRecentRepositories(), menuCommands(), std::move(customs));
  placeholder_ = tr("Open a repository or run a command");
}

bool QuickLaunchSession::canTake(const CommandProviderItem& item) const {
  if (pending_) return std::holds_alternative<RepositoryFile>(item) || std::holds_alternative<ReferencePtr>(item);
  if (const auto* command = std::get_if<QuickLaunchCommand>(&item)) return command->enabled;
  return std::holds_alternative<RepositoryRecordPtr>(item);
}

QuickLaunchSession::Outcome QuickLaunchSession::take(const CommandProviderItem& item) {
  if (pending_) {
    // A value of the pending command's argument.
    if (const auto* file = std::get_if<RepositoryFile>(&item)) {
      context_.paths = {file->path};
    } else if (const auto* reference = std::get_if<ReferencePtr>(&item); reference && *reference) {
      context_.reference = *reference;
      context_.references = {*reference};
    } else {
      return Outcome::ignored;
    }
    ++nextArgument_;
    return askNextArgument();
  }
  if (const auto* repository = std::get_if<RepositoryRecordPtr>(&item); repository && *repository) {
    documents_.openRepository((*repository)->repositoryPath, window_);
    return Outcome::done;
  }
  const auto* command = std::get_if<QuickLaunchCommand>(&item);
  if (!command || !command->enabled) return Outcome::ignored;
  if (command->identifier.startsWith(QStringLiteral("menu:"))) {
    const QPointer<QAction> action = menuActions_.value(command->identifier);
    if (action && action->isEnabled()) action->trigger();
    return Outcome::done;
  }
  if (command->identifier.startsWith(QStringLiteral("custom:"))) {
    const size_t index = command->identifier.section(QLatin1Char(':'), 1).toULong();
    if (index >= customCommands_.size()) return Outcome::ignored;
    RunCustomCommandCommand::execute(context_, customCommands_[index]);
    return Outcome::done;
  }
  pending_ = CommandTable::find(command->identifier.section(QLatin1Char(':'), 1));
  if (!pending_) return Outcome::ignored;
  nextArgument_ = 0;
  return askNextArgument();
}

QuickLaunchSession::Outcome QuickLaunchSession::askNextArgument() {
  // Arguments of no list of their own (a free text) are left to the command's sheet.
  while (nextArgument_ < pending_->arguments.size() && pending_->arguments[nextArgument_].type == Type::defaultType) ++nextArgument_;
  if (nextArgument_ == pending_->arguments.size()) {
    run();
    return Outcome::done;
  }
  const CommandDescriptor::Argument& argument = pending_->arguments[nextArgument_];
  const QString name = CommandTable::paletteName(*pending_).remove(QStringLiteral("..."));
  problem_.clear();
  if (argument.type == Type::repositoryFile) {
    // The files are those of the work tree: a command that may act on a chosen commit
    // (blame, history) takes them there, not at the commit selected in the list.
    if ((bits(pending_->needs) & bits(Needs::revision)) != bits(Needs::revision)) context_.revisions.clear();
    // git's file list, read off the main thread; the list shows when it arrives.
    placeholder_ = tr("%1: choose a file").arg(name);
    provider_ = std::make_unique<RepositoryFileCommandProvider>(std::vector<RepositoryFile>{}, context_.module());
    loading_ = true;
    const GitModule module = context_.module();
    runQueued<GitResult<std::vector<RepositoryFile>>>(
        context_.queue(), this, tr("Read the files of the repository"), Job::Show::none(),
        [module](JobProgress&) { return RepositoryFileCommandProvider::load(module); },
        [this, module](const GitResult<std::vector<RepositoryFile>>& files) {
          loading_ = false;
          if (files) {
            provider_ = std::make_unique<RepositoryFileCommandProvider>(files.value(), module);
          } else {
            problem_ = tr("The files of the repository could not be read: %1").arg(describe(files.error()));
          }
          Q_EMIT providerChanged();
        });
    return Outcome::nextArgument;
  }
  const ReferenceChoice choice = referenceChoice(argument.type);
  placeholder_ = tr("%1: choose %2").arg(name, choice.noun);
  std::vector<ReferencePtr> references;
  if (const RepositoryDataPtr data = context_.data()) {
    const bool last = nextArgument_ + 1 == pending_->arguments.size();
    for (const ReferencePtr& reference : ReferenceCommandProvider::references(data->references, choice.kinds)) {
      // Only what the command takes: Checkout offers no branch that is checked out already.
      CommandContext candidate = context_;
      candidate.reference = reference;
      candidate.references = {reference};
      if (!last || pending_->isAvailable(candidate)) references.push_back(reference);
    }
  }
  provider_ = std::make_unique<ReferenceCommandProvider>(std::move(references), choice.header);
  return Outcome::nextArgument;
}

void QuickLaunchSession::run() {
  const CommandDescriptor* command = std::exchange(pending_, nullptr);
  CommandTable::run(command->identifier, context_);
}
