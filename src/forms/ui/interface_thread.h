#pragma once
// Calls from work on a worker thread into the windows. A call made off the interface thread runs
// there while the worker waits for it, so that what the work says (a box, a status text, a
// window refilled) reaches the widgets in its order and the work goes on with the answer.

#include <QMetaObject>
#include <QObject>
#include <QThread>
#include <type_traits>

namespace tessel {

// Runs `call` on `owner`'s thread and gives back its result; at once when already there.
template <typename Call>
auto OnInterfaceThread(QObject& owner, Call&& call) -> decltype(call()) {
  using Result = decltype(call());
  if (QThread::currentThread() == owner.thread()) return call();
  if constexpr (std::is_void_v<Result>) {
    QMetaObject::invokeMethod(&owner, [&call] { call(); }, Qt::BlockingQueuedConnection);
  } else {
    Result result{};
    QMetaObject::invokeMethod(&owner, [&] { result = call(); }, Qt::BlockingQueuedConnection);
    return result;
  }
}

// True when the caller runs on `owner`'s thread.
inline bool OnThreadOf(const QObject& owner) { return QThread::currentThread() == owner.thread(); }

}  // namespace tessel
