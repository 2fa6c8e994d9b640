#pragma once
// The first window of a new user: asks for the folder that holds their source code,
// stores it as "defaultSourceFolder", looks for repositories in it and then reports
// welcomeCompleted.
#include <QWidget>

class AppSettings;
class Preferences;
class QLabel;
class QLineEdit;
class QPushButton;

class WelcomeWindowController : public QWidget {
  Q_OBJECT

 public:
  WelcomeWindowController(AppSettings& registry, Preferences& preferences, QWidget* parent = nullptr);

  QLineEdit* folderField() const { return folder_; }
  QPushButton* continueButton() const { return continue_; }
  QString statusText() const;

  // Stores the folder and scans it off the main thread; welcomeCompleted follows.
  void complete();

  // The first of ~/src, ~/Projects, ~/code, ~/git that exists; else the home folder.
  static QString suggestedFolder();

 Q_SIGNALS:
  void welcomeCompleted(int repositoriesFound);

 private:
  void chooseFolder();
  void updateButtons();

  AppSettings& registry_;
  Preferences& preferences_;
  QLineEdit* folder_;
  QPushButton* choose_;
  QPushButton* continue_;
  QLabel* status_;
  bool scanning_ = false;
};
