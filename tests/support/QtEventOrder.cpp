// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded ahead of Qt for the thread sanitizer, which sees nothing of what Qt does between threads:
// each queued call would be a race between its sender and its receiver. Here every event comes
// after all that was sent before. That is a little more order than there is, so a race beside an
// event may go unseen; none is seen that is not there. A thread that Qt has waited for has ended.
#include <QDeadlineTimer>
#include <QMetaObject>
#include <QObject>

#include <dlfcn.h>
#include <map>
#include <mutex>
#include <pthread.h>
#include <sched.h>

extern "C" {
[[gnu::weak]] void __tsan_acquire(void *);
[[gnu::weak]] void __tsan_release(void *);
}

namespace
{
using Type = Qt::ConnectionType;
using Return = QGenericReturnArgument;
using Argument = QGenericArgument;

char g_order;

bool onEvent(void **)
{
    if (__tsan_acquire)
        __tsan_acquire(&g_order);
    return false; // the event goes its way
}

std::mutex g_mutex;

/// How many threads run by their argument, which is the QThread of one of Qt's. With the mutex.
std::map<void *, int> &running()
{
    static auto *const the = new std::map<void *, int>; // threads begin before main() and end after
    return *the;
}

struct Thread
{
    void *(*run)(void *);
    void *argument;
};

void hasEnded(void *argument)
{
    const std::lock_guard lock(g_mutex);
    if (--running()[argument] == 0)
        running().erase(argument);
}

void *runThread(void *argument)
{
    const Thread thread = *static_cast<Thread *>(argument);
    delete static_cast<Thread *>(argument);
    void *const result = thread.run(thread.argument);
    if (__tsan_release)
        __tsan_release(&g_order);
    hasEnded(thread.argument);
    return result;
}

/// Qt says that a thread is through with what it was for; then it ends.
void awaitEnd(void *argument)
{
    const auto isRunning = [argument] {
        const std::lock_guard lock(g_mutex);
        return running().count(argument) > 0;
    };
    while (isRunning())
        sched_yield();
    if (__tsan_acquire)
        __tsan_acquire(&g_order);
}

/// What the sender has done so far comes before every event from now on.
void order()
{
    static const bool isListening = [] {
        constexpr int kEventNotifyCallback = 0; // of QInternal
        using Register = bool (*)(int, bool (*)(void **));
        const auto add = reinterpret_cast<Register>(
            dlsym(RTLD_DEFAULT, "_ZN9QInternal16registerCallbackENS_8CallbackEPFbPPvE"));
        return add && add(kEventNotifyCallback, onEvent);
    }();
    if (isListening && __tsan_release)
        __tsan_release(&g_order);
}

/// A call that waited until the receiver's handle() was through.
void comeAfter(Type type)
{
    if (type == Qt::BlockingQueuedConnection && __tsan_acquire)
        __tsan_acquire(&g_order);
}

/// Qt's own function of a name.
template <typename Function>
Function *next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
} // namespace

#define ACTIVATE "_ZN11QMetaObject8activateEP7QObjectPKS_iPPv"
#define INVOKE                                                                                     \
    "_ZN11QMetaObject12invokeMethodEP7QObjectPKcN2Qt14ConnectionTypeE22QGenericReturnArgument"     \
    "16QGenericArgumentS7_S7_S7_S7_S7_S7_S7_S7_S7_"
#define INVOKE_FUNCTOR                                                                             \
    "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14"             \
    "ConnectionTypeEPv"
#define POST "_ZN16QCoreApplication9postEventEP7QObjectP6QEventi"
#define SINGLE_SHOT                                                                                \
    "_ZN6QTimer14singleShotImplEiN2Qt9TimerTypeEPK7QObjectPN9QtPrivate15QSlotObjectBaseE"
#define DELETE_LATER "_ZN7QObject11deleteLaterEv"
#define EVENT "_ZN7QObject5eventEP6QEvent"
#define IS_RUNNING "_ZNK7QThread9isRunningEv"
#define WAIT "_ZN7QThread4waitEm"
#define WAIT_UNTIL "_ZN7QThread4waitE14QDeadlineTimer"

// By the names that the linker knows: some are private.
extern "C" {
// Even addresses: an odd one in a pointer to a member function says that it is virtual.
#define EXPORTED [[gnu::visibility("default"), gnu::aligned(16)]]
EXPORTED void activate(void *sender, const void *type, int index, void **arguments) asm(ACTIVATE);
EXPORTED bool invoke(void *object, const char *member, Type type, Return result, Argument a0,
    Argument a1, Argument a2, Argument a3, Argument a4, Argument a5, Argument a6, Argument a7,
    Argument a8, Argument a9) asm(INVOKE);
EXPORTED bool invokeFunctor(void *object, void *slot, Type type, void *result) asm(INVOKE_FUNCTOR);
EXPORTED void post(void *receiver, void *event, int priority) asm(POST);
EXPORTED void singleShot(int ms, int type, const void *receiver, void *slot) asm(SINGLE_SHOT);
EXPORTED void deleteLater(void *object) asm(DELETE_LATER);
EXPORTED bool handle(void *object, void *event) asm(EVENT);
EXPORTED bool isRunning(const void *thread) asm(IS_RUNNING);
EXPORTED bool waitFor(void *thread, unsigned long ms) asm(WAIT);
EXPORTED bool waitUntil(void *thread, QDeadlineTimer deadline) asm(WAIT_UNTIL);
EXPORTED int createThread(pthread_t *thread, const pthread_attr_t *attributes, void *(*run)(void *),
    void *argument) asm("pthread_create");
}

void activate(void *sender, const void *type, int index, void **arguments)
{
    static auto *const qt = next(activate, ACTIVATE);
    order();
    qt(sender, type, index, arguments);
}

bool invoke(void *object, const char *member, Type type, Return result, Argument a0, Argument a1,
    Argument a2, Argument a3, Argument a4, Argument a5, Argument a6, Argument a7, Argument a8,
    Argument a9)
{
    static auto *const qt = next(invoke, INVOKE);
    order();
    const bool isDone = qt(object, member, type, result, a0, a1, a2, a3, a4, a5, a6, a7, a8, a9);
    comeAfter(type);
    return isDone;
}

// The function goes with the last of sender and event; where that is the sender it comes after the
// call.
bool invokeFunctor(void *object, void *slot, Type type, void *result)
{
    static auto *const qt = next(invokeFunctor, INVOKE_FUNCTOR);
    auto *const function = static_cast<QtPrivate::QSlotObjectBase *>(slot);
    function->ref();
    order();
    const bool isDone = qt(object, slot, type, result);
    if (__tsan_acquire)
        __tsan_acquire(&g_order);
    function->destroyIfLastRef();
    return isDone;
}

void post(void *receiver, void *event, int priority)
{
    static auto *const qt = next(post, POST);
    order();
    qt(receiver, event, priority);
}

void singleShot(int ms, int type, const void *receiver, void *slot)
{
    static auto *const qt = next(singleShot, SINGLE_SHOT);
    order();
    qt(ms, type, receiver, slot);
}

void deleteLater(void *object)
{
    static auto *const qt = next(deleteLater, DELETE_LATER);
    order();
    qt(object);
}

bool handle(void *object, void *event)
{
    static auto *const qt = next(handle, EVENT);
    const bool isHandled = qt(object, event);
    order();
    return isHandled;
}

bool isRunning(const void *thread)
{
    static auto *const qt = next(isRunning, IS_RUNNING);
    const bool isStillRunning = qt(thread);
    if (!isStillRunning)
        awaitEnd(const_cast<void *>(thread));
    return isStillRunning;
}

bool waitFor(void *thread, unsigned long ms)
{
    static auto *const qt = next(waitFor, WAIT);
    const bool isThrough = qt(thread, ms);
    if (isThrough)
        awaitEnd(thread);
    return isThrough;
}

bool waitUntil(void *thread, QDeadlineTimer deadline)
{
    static auto *const qt = next(waitUntil, WAIT_UNTIL);
    const bool isThrough = qt(thread, deadline);
    if (isThrough)
        awaitEnd(thread);
    return isThrough;
}

int createThread(
    pthread_t *thread, const pthread_attr_t *attributes, void *(*run)(void *), void *argument)
{
    static auto *const create = next(createThread, "pthread_create");
    {
        const std::lock_guard lock(g_mutex);
        ++running()[argument];
    }
    auto *const call = new Thread{run, argument};
    const int status = create(thread, attributes, runThread, call);
    if (status != 0) {
        delete call;
        hasEnded(argument);
    }
    return status;
}
