#pragma once
#include "Models/RepositoryManager/RepositoryManagerItem.h"
#include "Models/RepositoryRecord.h"

class RepositoryManagerRepositoryItem : public RepositoryManagerItem {
 public:
  explicit RepositoryManagerRepositoryItem(RepositoryRecordPtr record) : RepositoryManagerItem(record->name), record(std::move(record)) {}

  RepositoryRecordPtr record;
};
