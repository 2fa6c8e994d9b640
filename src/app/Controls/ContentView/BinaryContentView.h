#pragma once
// A binary file that isn't shown, by its size. A large one not managed by LFS says so:
// a "not LFS" badge and a tip with its size.
#include <QWidget>

class QLabel;

class BinaryContentView : public QWidget {
  Q_OBJECT
 public:
  explicit BinaryContentView(QWidget* parent = nullptr);

  void showSize(qint64 size);

  QLabel* notLfsLabel() const { return notLfs_; }
  QLabel* tipLabel() const { return tip_; }

 private:
  QLabel* size_;
  QLabel* notLfs_;
  QLabel* tip_;
};
