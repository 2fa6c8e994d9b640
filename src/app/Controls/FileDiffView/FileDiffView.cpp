#include "Controls/FileDiffView/FileDiffView.h"

#include "Controls/FileDiffView/ConflictDiffView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QTextBlock>
#include <QToolButton>
#include <QVBoxLayout>

#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Models/FileContent/TextDisplayDecision.h"
#include "Models/PatchViewBuilder.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

namespace {
constexpr int unifiedLayout = 0;
constexpr int sideBySideLayout = 1;
}  // namespace

FileDiffView::FileDiffView(Mode mode, QWidget* parent) : QWidget(parent), mode_(mode) {
  messagePage_ = new QWidget(this);
  message_ = new QLabel(tr("Select a file to see its changes."), messagePage_);
  message_->setAlignment(Qt::AlignCenter);
  message_->setWordWrap(true);
  loadLarge_ = new QPushButton(TextDisplayDecision::fallbackButton, messagePage_);
  loadLarge_->setAutoDefault(false);
  loadLarge_->hide();
  auto* messageLayout = new QVBoxLayout(messagePage_);
  messageLayout->addStretch();
  messageLayout->addWidget(message_);
  messageLayout->addWidget(loadLarge_, 0, Qt::AlignHCenter);
  messageLayout->addStretch();
  connect(loadLarge_, &QPushButton::clicked, this, &FileDiffView::loadLargeRequested);

  imagePage_ = new QWidget(this);
  auto* imageLayout = new QHBoxLayout(imagePage_);
  oldImage_ = new QLabel(imagePage_);
  newImage_ = new QLabel(imagePage_);
  for (QLabel* label : {oldImage_, newImage_}) {
    label->setAlignment(Qt::AlignCenter);
    label->setFrameShape(QFrame::StyledPanel);
    imageLayout->addWidget(label, 1);
  }

  textPage_ = buildTextPage();
  stack_ = new QStackedWidget(this);
  stack_->addWidget(messagePage_);
  stack_->addWidget(imagePage_);
  stack_->addWidget(textPage_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(stack_);
}

QString FileDiffView::layoutKey() const {
  return mode_ == Mode::staging ? QStringLiteral("commitDiffLayoutMode") : QStringLiteral("revisionDiffLayoutMode");
}

QWidget* FileDiffView::buildTextPage() {
  auto* page = new QWidget(this);
  title_ = new QLabel(page);
  title_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layoutButton_ = new QToolButton(page);
  layoutButton_->setText(tr("Side by Side"));
  layoutButton_->setToolTip(tr("Show the old and the new text side by side"));
  layoutButton_->setCheckable(true);
  layoutButton_->setChecked(isSideBySide());
  connect(layoutButton_, &QToolButton::toggled, this, &FileDiffView::setSideBySide);
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::valueChanged, this, [this](const QString& key) {
    if (key == layoutKey()) applyLayout();
  });
  auto* header = new QHBoxLayout;
  header->setContentsMargins(6, 3, 6, 3);
  header->addWidget(title_, 1);
  header->addWidget(layoutButton_);

  // A commit's diff is only read: the unified text is the plain diff view, and the two
  // sides stage nothing.
  QWidget* unifiedPage = nullptr;
  if (mode_ == Mode::staging) {
    unified_ = new CommitTextDiffView(page);
    unifiedPage = unified_;
  } else {
    text_ = new DiffTextView(page);
    unifiedPage = text_;
  }
  left_ = new CommitTextDiffView(page);
  right_ = new CommitTextDiffView(page);
  left_->setOperationsEnabled(mode_ == Mode::staging);
  right_->setOperationsEnabled(mode_ == Mode::staging);
  // One bar column for both halves, between them.
  right_->shareBarColumnOf(left_);
  auto* sides = new QSplitter(Qt::Horizontal, page);
  sides->addWidget(left_);
  sides->addWidget(right_);
  sideBySidePage_ = sides;
  // Both sides have the same rows, so they scroll as one.
  connect(left_->verticalScrollBar(), &QScrollBar::valueChanged, right_->verticalScrollBar(), &QScrollBar::setValue);
  connect(right_->verticalScrollBar(), &QScrollBar::valueChanged, left_->verticalScrollBar(), &QScrollBar::setValue);
  connect(left_->horizontalScrollBar(), &QScrollBar::valueChanged, right_->horizontalScrollBar(), &QScrollBar::setValue);
  connect(right_->horizontalScrollBar(), &QScrollBar::valueChanged, left_->horizontalScrollBar(), &QScrollBar::setValue);
  for (CommitTextDiffView* view : {unified_, left_, right_}) {
    if (!view || mode_ != Mode::staging) continue;
    connect(view, &CommitTextDiffView::toggleStageRequested, this, [this, view] { requestApply(view, false); });
    connect(view, &CommitTextDiffView::discardRequested, this, [this, view] { requestApply(view, true); });
  }
  layouts_ = new QStackedWidget(page);
  layouts_->addWidget(unifiedPage);
  layouts_->addWidget(sideBySidePage_);

  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(header);
  layout->addWidget(layouts_, 1);
  return page;
}

bool FileDiffView::isSideBySide() const { return Preferences::shared().integer(layoutKey()) == sideBySideLayout; }

void FileDiffView::setSideBySide(bool sideBySide) {
  if (sideBySide != isSideBySide()) {
    // The write reaches applyLayout through the notifier, as one from elsewhere would.
    Preferences::shared().setValue(layoutKey(), sideBySide ? sideBySideLayout : unifiedLayout);
    PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffLayoutModeChanged);
    return;
  }
  applyLayout();
}

void FileDiffView::applyLayout() {
  if (!layoutButton_) return;
  const bool sideBySide = isSideBySide();
  {
    const QSignalBlocker blocker(layoutButton_);
    layoutButton_->setChecked(sideBySide);
  }
  if (patch_ && sideBySide != shownSideBySide_) layOut(false);
}

void FileDiffView::showMessage(const QString& message) {
  message_->setText(message);
  loadLarge_->hide();
  patch_.reset();
  stack_->setCurrentWidget(messagePage_);
}

void FileDiffView::showContent(DiffContent content, const ChangedFilePtr& file, bool keepPosition) {
  if (content.conflictDiff) {
    if (!conflictPage_) {
      conflictPage_ = new ConflictDiffView(this);
      stack_->addWidget(conflictPage_);
      connect(conflictPage_, &ConflictDiffView::resolveRequested, this, &FileDiffView::resolveConflictsRequested);
    }
    conflictPage_->showDiff(file ? file->path : QString(), *content.conflictDiff);
    patch_.reset();
    stack_->setCurrentWidget(conflictPage_);
  } else if (content.isImage) {
    auto showImage = [](QLabel* label, const std::optional<QImage>& image, const QString& missing) {
      if (image && !image->isNull()) {
        label->setPixmap(QPixmap::fromImage(image->width() > 480 ? image->scaledToWidth(480, Qt::SmoothTransformation) : *image));
      } else {
        label->setPixmap({});
        // A side that exists but does not decode is not a missing side.
        label->setText(image ? tr("This image cannot be shown") : missing);
      }
    };
    showImage(oldImage_, content.oldImage, tr("Created"));
    showImage(newImage_, content.newImage, tr("Deleted"));
    patch_.reset();
    stack_->setCurrentWidget(imagePage_);
  } else if (content.isText()) {
    patch_ = content.patch;
    file_ = file;
    layOut(keepPosition && stack_->currentWidget() == textPage_, std::move(content.rows));
    stack_->setCurrentWidget(textPage_);
  } else {
    showMessage(content.message);
    loadLarge_->setVisible(content.offerLoadLarge);
  }
}

void FileDiffView::layOut(bool keepPosition, std::optional<std::vector<UnifiedDiffRow>> rows) {
  const bool staged = file_ && file_->staged;
  const XFilePatch& file = patch_->files.front();
  title_->setText(PatchViewBuilder::fileTitle(file) + (staged ? tr("  (staged)") : QString()));
  const bool sideBySide = isSideBySide();
  shownSideBySide_ = sideBySide;
  if (mode_ == Mode::readOnly) {
    if (sideBySide) {
      PatchViewBuilder::SideBySide documents = PatchViewBuilder::sideBySide(patch_);
      left_->showPatch(std::move(documents.left), CommitTextDiffView::Numbers::oldOnly, false);
      right_->showPatch(std::move(documents.right), CommitTextDiffView::Numbers::newOnly, false);
      text_->setRows({});
      layouts_->setCurrentWidget(sideBySidePage_);
    } else {
      // The rows come made from the job; a switch of layout makes them here.
      text_->setRows(rows ? std::move(*rows) : unifiedDiffRows(file));
      left_->showPatch({}, CommitTextDiffView::Numbers::oldOnly, false);
      right_->showPatch({}, CommitTextDiffView::Numbers::newOnly, false);
      layouts_->setCurrentWidget(text_);
    }
    return;
  }
  CommitTextDiffView* main = sideBySide ? left_ : unified_;
  const int scroll = main->verticalScrollBar()->value();
  const int cursor = main->textCursor().position();
  if (sideBySide) {
    PatchViewBuilder::SideBySide documents = PatchViewBuilder::sideBySide(patch_);
    left_->showPatch(std::move(documents.left), CommitTextDiffView::Numbers::oldOnly, staged);
    right_->showPatch(std::move(documents.right), CommitTextDiffView::Numbers::newOnly, staged);
    unified_->showPatch({}, CommitTextDiffView::Numbers::oldAndNew, staged);
    layouts_->setCurrentWidget(sideBySidePage_);
  } else {
    unified_->showPatch(PatchViewBuilder::unified(patch_), CommitTextDiffView::Numbers::oldAndNew, staged);
    left_->showPatch({}, CommitTextDiffView::Numbers::oldOnly, staged);
    right_->showPatch({}, CommitTextDiffView::Numbers::newOnly, staged);
    layouts_->setCurrentWidget(unified_);
  }
  if (keepPosition) {
    QTextCursor restored(main->document());
    restored.setPosition(std::clamp(cursor, 0, std::max(main->document()->characterCount() - 1, 0)));
    main->setTextCursor(restored);
    main->verticalScrollBar()->setValue(scroll);
  }
}

void FileDiffView::requestApply(CommitTextDiffView* view, bool discard) {
  if (!file_ || !patch_) return;
  const SelectionMode mode = discard ? SelectionMode::discard : file_->staged ? SelectionMode::unstage : SelectionMode::stage;
  if (discard && file_->staged) return;
  const bool wholeHunk = view->activeChunk() && !view->activeChunk()->manualSelection;
  if (XPatchPtr patch = view->activeSelectionPatch(mode)) Q_EMIT selectionApplyRequested(std::move(patch), mode, wholeHunk);
}

bool FileDiffView::isShowingText() const { return stack_->currentWidget() == textPage_; }
bool FileDiffView::isShowingImages() const { return stack_->currentWidget() == imagePage_; }
bool FileDiffView::isOfferingLargeDiff() const { return stack_->currentWidget() == messagePage_ && !loadLarge_->isHidden(); }
QString FileDiffView::message() const { return stack_->currentWidget() == messagePage_ ? message_->text() : QString(); }
QString FileDiffView::oldImageText() const { return oldImage_->text(); }
QString FileDiffView::newImageText() const { return newImage_->text(); }
QString FileDiffView::title() const { return title_->text(); }
bool FileDiffView::hasNewImage() const { return !newImage_->pixmap().isNull(); }
