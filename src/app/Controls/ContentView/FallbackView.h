#pragma once
// Stands where a text too large to render would be, until the user asks for it.
#include <QWidget>

class QPushButton;

class FallbackView : public QWidget {
  Q_OBJECT
 public:
  explicit FallbackView(QWidget* parent = nullptr);

  QPushButton* loadButton() const { return load_; }

 Q_SIGNALS:
  void loadRequested();

 private:
  QPushButton* load_;
};
