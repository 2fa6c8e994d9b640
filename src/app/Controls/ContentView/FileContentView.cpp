#include "Controls/ContentView/FileContentView.h"

#include <QLabel>
#include <QLocale>
#include <QPixmap>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "Controls/ContentView/BinaryContentView.h"
#include "Controls/ContentView/FallbackView.h"
#include "Controls/ContentView/TextContentView.h"
#include "Controls/GitOutputView.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/ImageContent.h"
#include "Models/FileContent/LfsContent.h"
#include "Models/FileContent/TextContent.h"
#include "Models/FileContent/TextDisplayDecision.h"

namespace {

QWidget* centered(std::initializer_list<QWidget*> widgets) {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addStretch();
  // A wrapping label takes the width, or its text would be cut at its narrow hint.
  for (QWidget* widget : widgets) {
    const auto* label = qobject_cast<QLabel*>(widget);
    layout->addWidget(widget, 0, label && label->wordWrap() ? Qt::Alignment() : Qt::AlignHCenter);
  }
  layout->addStretch();
  return page;
}

QLabel* wrappedLabel() {
  auto* label = new QLabel;
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

FileContentView::FileContentView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("fileContentView"));
  message_ = wrappedLabel();
  text_ = new TextContentView;
  fallback_ = new FallbackView;
  connect(fallback_, &FallbackView::loadRequested, this, &FileContentView::loadLargeRequested);
  image_ = new QLabel;
  image_->setAlignment(Qt::AlignCenter);
  auto* imageScroll = new QScrollArea;
  imageScroll->setWidget(image_);
  imageScroll->setWidgetResizable(true);
  lfs_ = wrappedLabel();
  lfs_->setFont(GitOutputView::codeFont());
  binary_ = new BinaryContentView;

  stack_ = new QStackedWidget(this);
  stack_->addWidget(centered({message_}));  // Page::message
  stack_->addWidget(text_);                 // Page::text
  stack_->addWidget(fallback_);             // Page::fallback
  stack_->addWidget(imageScroll);           // Page::image
  stack_->addWidget(centered({lfs_}));      // Page::lfs
  stack_->addWidget(binary_);               // Page::binary
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(stack_);
  showMessage(tr("Select a file to see its content."));
}

QPlainTextEdit* FileContentView::textView() const { return text_; }

QLabel* FileContentView::notLfsLabel() const { return binary_->notLfsLabel(); }

QLabel* FileContentView::binaryTip() const { return binary_->tipLabel(); }

FileContentView::Page FileContentView::page() const { return static_cast<Page>(stack_->currentIndex()); }

QString FileContentView::shownText() const { return page() == Page::text ? text_->toPlainText() : QString(); }

void FileContentView::showMessage(const QString& message) {
  content_.reset();
  message_->setText(message);
  stack_->setCurrentIndex(static_cast<int>(Page::message));
}

void FileContentView::showSubmodule(const QString& path, const QString& sha) {
  content_.reset();
  message_->setText(tr("Submodule '%1' at commit %2").arg(path, sha));
  stack_->setCurrentIndex(static_cast<int>(Page::message));
}

void FileContentView::showContent(const ContentPtr& content, bool loadLargeDiff) {
  content_ = content;
  if (!content) {
    showMessage(tr("Nothing to show."));
    return;
  }
  switch (content->kind()) {
    case Content::Kind::text: {
      const QString& text = static_cast<const TextContent&>(*content).string;
      if (TextDisplayDecision::exceedsLimit(text.size(), loadLargeDiff)) {
        LOG_INFO(QStringLiteral("Changes for '%1' are too large to display").arg(content->filepath));
        stack_->setCurrentIndex(static_cast<int>(Page::fallback));
        return;
      }
      text_->setPlainText(text);
      stack_->setCurrentIndex(static_cast<int>(Page::text));
      return;
    }
    case Content::Kind::image: {
      QPixmap pixmap;
      if (!pixmap.loadFromData(static_cast<const ImageContent&>(*content).data)) {
        showMessage(tr("The image could not be read."));
        content_ = content;
        return;
      }
      image_->setPixmap(pixmap);
      stack_->setCurrentIndex(static_cast<int>(Page::image));
      return;
    }
    case Content::Kind::lfs: {
      const auto& lfs = static_cast<const LfsContent&>(*content);
      lfs_->setText(tr("Managed by Git LFS (%1)\n\n%2").arg(QLocale().formattedDataSize(lfs.size), lfs.lfsPointer.description()));
      stack_->setCurrentIndex(static_cast<int>(Page::lfs));
      return;
    }
    case Content::Kind::binary: {
      binary_->showSize(static_cast<const BinaryContent&>(*content).size);
      stack_->setCurrentIndex(static_cast<int>(Page::binary));
      return;
    }
  }
}
