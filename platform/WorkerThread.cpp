#include "platform/WorkerThread.h"

#include <pthread.h>

void LetRun(std::thread thread, const char* name) {
    ::pthread_setname_np(thread.native_handle(), name);
    thread.detach();
}
