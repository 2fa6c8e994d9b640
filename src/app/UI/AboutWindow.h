#pragma once
// Help > About: the version, the git in use and the licences of the libraries; and
// Help > Keyboard Shortcuts: every action of the window's menus that has a key.
#include <QDialog>

class QLabel;
class QMenuBar;
class QTreeWidget;

class AboutWindow : public QDialog {
  Q_OBJECT
 public:
  explicit AboutWindow(QWidget* parent = nullptr);
  QLabel* gitLabel() const { return git_; }
  QString text() const;

 Q_SIGNALS:
  void gitVersionRead();

 private:
  QLabel* version_;
  QLabel* git_;
  QLabel* libraries_;
};

class KeyboardShortcutsWindow : public QDialog {
  Q_OBJECT
 public:
  // Lists the menus' actions as they stand now (a menu filled when it opens is to be
  // filled first).
  explicit KeyboardShortcutsWindow(const QMenuBar* menus, QWidget* parent = nullptr);
  QTreeWidget* list() const { return list_; }

 private:
  QTreeWidget* list_;
};
