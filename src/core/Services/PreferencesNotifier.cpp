#include "Services/PreferencesNotifier.h"

#include <QMetaEnum>

PreferencesNotifier& PreferencesNotifier::shared() {
  static PreferencesNotifier* instance = new PreferencesNotifier;  // lives as long as the process
  return *instance;
}

QString PreferencesNotifier::name(Notification notification) {
  return QString::fromLatin1(QMetaEnum::fromType<Notification>().valueToKey(static_cast<int>(notification)));
}

void PreferencesNotifier::post(Notification notification) {
  Q_EMIT notified(notification);
  switch (notification) {
    case Notification::revisionOrderingChanged: Q_EMIT revisionOrderingChanged(); break;
    case Notification::remoteServiceStatusChanged: Q_EMIT remoteServiceStatusChanged(); break;
    case Notification::diffIgnoreWhitespacesChanged: Q_EMIT diffIgnoreWhitespacesChanged(); break;
    case Notification::diffContextSizeChanged: Q_EMIT diffContextSizeChanged(); break;
    case Notification::diffTextViewWordWrapChanged: Q_EMIT diffTextViewWordWrapChanged(); break;
    case Notification::diffShowHiddenSymbolsChanged: Q_EMIT diffShowHiddenSymbolsChanged(); break;
    case Notification::diffLayoutModeChanged: Q_EMIT diffLayoutModeChanged(); break;
    case Notification::diffTextViewFontChanged: Q_EMIT diffTextViewFontChanged(); break;
    case Notification::repositoryInfoChanged: Q_EMIT repositoryInfoChanged(); break;
    case Notification::pushAutomaticallyOnCommitChanged: Q_EMIT pushAutomaticallyOnCommitChanged(); break;
    case Notification::enableCommitSpellCheckingChanged: Q_EMIT enableCommitSpellCheckingChanged(); break;
    case Notification::useOldToolbarStyleWithLabelsChanged: Q_EMIT useOldToolbarStyleWithLabelsChanged(); break;
    case Notification::pageGuideLinePositionChanged: Q_EMIT pageGuideLinePositionChanged(); break;
    case Notification::useMonospaceFontInCommitDescriptionChanged: Q_EMIT useMonospaceFontInCommitDescriptionChanged(); break;
    case Notification::commitSubjectLimitChanged: Q_EMIT commitSubjectLimitChanged(); break;
    case Notification::repositoryDataUpdated: Q_EMIT repositoryDataUpdated(); break;
    case Notification::repositoryStatusUpdated: Q_EMIT repositoryStatusUpdated(); break;
    case Notification::referenceSortOrderChanged: Q_EMIT referenceSortOrderChanged(); break;
    case Notification::updateRepoStatusAutomaticallyChanged: Q_EMIT updateRepoStatusAutomaticallyChanged(); break;
    case Notification::showBugtrackerHyperlinksChanged: Q_EMIT showBugtrackerHyperlinksChanged(); break;
    case Notification::repositoryManagerDataUpdated: Q_EMIT repositoryManagerDataUpdated(); break;
  }
}
