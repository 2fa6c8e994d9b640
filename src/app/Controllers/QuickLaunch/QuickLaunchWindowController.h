#pragma once
// The quick launch: a panel floating over the window with a text field and the list of
// its session. Typing refreshes the list after a short rest (fast typing refreshes once);
// Up and Down move the selection past the headers; Return takes the row; Escape, a click
// beside the panel or the focus leaving it closes it.
#include <QPointer>
#include <QTimer>
#include <QWidget>

class JelvMainWindow;
class QFrame;
class QLabel;
class QLineEdit;
class QListView;
class QuickLaunchListModel;
class QuickLaunchSession;

class QuickLaunchWindowController : public QWidget {
  Q_OBJECT

 public:
  // The window's panel, made and shown if it has none; the text field takes the focus.
  static QuickLaunchWindowController* showOver(JelvMainWindow* window);

  static constexpr int refreshDelayMs = 80;

  QLineEdit* textField() const { return text_; }
  QListView* list() const { return list_; }
  QuickLaunchSession* session() const { return session_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  explicit QuickLaunchWindowController(JelvMainWindow* window);
  void refreshCommandList();
  void showProvider();
  void moveSelection(int step);
  void takeSelectedRow();
  void closePanel();
  void layOut();

  QuickLaunchSession* session_;
  QFrame* box_;
  QLineEdit* text_;
  QLabel* status_;
  QListView* list_;
  QuickLaunchListModel* model_;
  QTimer refreshCommandListAction_;
  bool taking_ = false;
};
