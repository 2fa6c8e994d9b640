#pragma once
// One tab: its own job queue and either the repository manager or one repository.
// A repository tab starts as "opening" while its folder is checked off the main thread
// and then shows the repository with its toolbar. Closing the tab cancels its jobs.
#include <QIcon>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Models/GitModule.h"
#include "Models/WindowSession.h"

class AppSettings;
class JobQueue;
class JelvDocument;
class QAction;
class QLabel;
class QToolBar;
class QVBoxLayout;

class JelvWindowController : public QWidget {
  Q_OBJECT

 public:
  enum class Kind { repositoryManager, opening, repository };

  // Makes the widget of a repository-manager tab (RepositoryManagerController unless
  // replaced). Its signals openRepositoryRequested(QString) and, if it has one,
  // openDocumentRequested() are connected by name, so any view with them fits.
  using RepositoryManagerFactory = std::function<QWidget*(AppSettings& registry, QWidget* parent)>;
  static void setRepositoryManagerFactory(RepositoryManagerFactory factory);

  static JelvWindowController* newRepositoryManager(AppSettings& registry, QWidget* parent = nullptr);
  static JelvWindowController* opening(const QString& path, QWidget* parent = nullptr);
  ~JelvWindowController() override;

  // Turns an opening tab into the repository's tab, named as the registry names it.
  void showRepository(const GitModule& module, AppSettings& registry);
  // Ends the tab's work: cancels every job of its queue. The tab may still be deleted later.
  void closeTab();

  Kind kind() const { return kind_; }
  QString title() const { return title_; }
  // The registry's colour tag of the repository, if it has one.
  std::optional<int> colorTag() const { return colorTag_; }
  QIcon tabIcon() const;
  QString tabToolTip() const;
  // The path the tab was opened with (opening) or the repository's path.
  QString repositoryPath() const;
  std::optional<GitModule> gitModule() const { return module_; }
  const std::shared_ptr<JobQueue>& jobQueue() const { return jobQueue_; }
  JelvDocument* document() const { return document_; }
  QWidget* repositoryManagerController() const { return repositoryManagerController_; }
  QToolBar* toolbar() const { return toolbar_; }
  // The tab's actions of the command table, in table order; the Repository menu lists them.
  const std::vector<QAction*>& commandActions() const { return commandActions_; }
  // Enables each command action as the current snapshot and selection allow.
  void updateCommandActions();
  TabSession session() const;

  // Reads the tab's name from the registry again (after a rename there).
  void updateTitle();

 Q_SIGNALS:
  void titleChanged();
  void openRepositoryRequested(const QString& path);
  // The repository asks for one of its submodules in a tab of its own.
  void openSubmoduleRequested(const QString& path);
  void openDocumentRequested();
  void cloneRequested();

 private Q_SLOTS:
  void forwardOpenRepository(const QString& path);
  void forwardOpenDocument();

 private:
  JelvWindowController(Kind kind, QWidget* parent);
  void buildToolbar();
  void buildCommandActions();
  void addQuickMenu(QAction* action, const QString& identifier);
  void updateRemoteCounts();

  const std::shared_ptr<JobQueue> jobQueue_;
  Kind kind_;
  QString path_;
  QString title_;
  std::optional<int> colorTag_;
  std::optional<GitModule> module_;
  AppSettings* registry_ = nullptr;
  QVBoxLayout* layout_ = nullptr;
  QWidget* repositoryManagerController_ = nullptr;
  JelvDocument* document_ = nullptr;
  QLabel* openingLabel_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  std::vector<QAction*> commandActions_;
};
