#include "Controls/ContentView/BinaryContentView.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include "Models/FileContent/TextDisplayDecision.h"

BinaryContentView::BinaryContentView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("binaryContentView"));
  size_ = new QLabel(this);
  notLfs_ = new QLabel(QStringLiteral("not LFS"), this);
  notLfs_->setObjectName(QStringLiteral("notLfsLabel"));
  notLfs_->setStyleSheet(QStringLiteral("QLabel { border: 1px solid palette(mid); border-radius: 4px; padding: 1px 6px; }"));
  tip_ = new QLabel(this);
  tip_->setAlignment(Qt::AlignCenter);
  tip_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addStretch();
  layout->addWidget(size_, 0, Qt::AlignHCenter);
  layout->addWidget(notLfs_, 0, Qt::AlignHCenter);
  layout->addWidget(tip_);
  layout->addStretch();
}

void BinaryContentView::showSize(qint64 size) {
  size_->setText(tr("Binary file, %1").arg(QLocale().formattedDataSize(size)));
  const auto tip = TextDisplayDecision::notLfsTip(size);
  notLfs_->setVisible(tip.has_value());
  tip_->setVisible(tip.has_value());
  tip_->setText(tip.value_or(QString()));
}
