#pragma once
// A window of tabs, each tab a JelvWindowController. The title follows the tab in
// front; closing the last tab closes the window. The menus call the document
// controller, which knows all windows.
#include <QMainWindow>

#include "Models/WindowSession.h"

class JelvDocumentController;
class JelvWindowController;
class QAction;
class QMenu;
class QTabWidget;

class JelvMainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit JelvMainWindow(JelvDocumentController& documents, QWidget* parent = nullptr);
  ~JelvMainWindow() override;

  QTabWidget* tabWidget() const { return tabs_; }
  int tabCount() const;
  JelvWindowController* tab(int index) const;
  JelvWindowController* currentTab() const;
  void addTab(JelvWindowController* tab, bool select = true);
  void selectTab(JelvWindowController* tab);
  // Cancels the tab's jobs and drops it. The user's close of the last tab closes the
  // window; otherwise the window stays, even empty, for the caller to fill.
  void closeTab(JelvWindowController* tab, bool closeEmptyWindow = true);
  // Hands the tab over, still running, e.g. to another window.
  JelvWindowController* takeTab(JelvWindowController* tab);
  void closeOtherTabs(JelvWindowController* keep);
  void selectNextTab();
  void selectPreviousTab();

  JelvDocumentController& documents() const { return documents_; }
  WindowSession session() const;
  QAction* action(const QString& objectName) const;
  // The clone sheet on this window, with `url` filled in; the clone opens in a tab here.
  void showCloneSheet(const QString& url);

 Q_SIGNALS:
  // A tab came, went, moved, changed its title, or another one came to the front.
  void tabsChanged();
  void activated();
  void geometryChanged();
  // The window closed; it is deleted later.
  void closed();

 protected:
  void closeEvent(QCloseEvent* event) override;
  // Folders dropped on the window open as repositories.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void buildMenus();
  // Writes the jobs of all repository tabs as a trace file and shows it in the file manager.
  void exportProfilingData();
  void fillRepositoryMenu(QMenu* menu);
  void updateTitle();
  void closeTabAt(int index);
  void showTabMenu(const QPoint& position);

  JelvDocumentController& documents_;
  QTabWidget* tabs_;
};
