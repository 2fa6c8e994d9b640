#pragma once
// Runs `work` as a job on the tab's queue and hands its value to `done` on the main
// thread, unless `receiver` has gone meanwhile. Keeps child processes off the main
// thread without a callback pyramid in every view.
#include <QCoreApplication>
#include <QPointer>
#include <functional>
#include <memory>

#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"

template <typename Value>
void runQueued(const std::shared_ptr<JobQueue>& queue, QObject* receiver, const QString& name, Job::Show show,
               std::function<Value(JobProgress&)> work, std::function<void(const Value&)> done) {
  QPointer<QObject> guard(receiver);
  queue->schedule(Job::make(name, show, Job::ProgressType::infinite,
                            [guard, work = std::move(work), done = std::move(done)](JobProgress& progress) {
                              Value value = work(progress);
                              QMetaObject::invokeMethod(qApp, [guard, done, value = std::move(value)] {
                                if (guard) done(value);
                              });
                            }));
}
