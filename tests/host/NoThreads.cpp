#include <cerrno>

#include <pthread.h>

/// Loaded before a program: a system whose limit on threads is reached.
extern "C" [[gnu::visibility("default")]] int pthread_create(pthread_t*, const pthread_attr_t*,
                                                             void* (*)(void*), void*)
{
    return EAGAIN;
}
