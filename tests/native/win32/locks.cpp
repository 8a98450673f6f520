#include <windows.h>

void AcquireSRWLockExclusive(SRWLOCK* lock) {
    pthread_rwlock_wrlock(&lock->lock);
}

BOOL TryAcquireSRWLockExclusive(SRWLOCK* lock) {
    return pthread_rwlock_trywrlock(&lock->lock) == 0;
}

void ReleaseSRWLockExclusive(SRWLOCK* lock) {
    pthread_rwlock_unlock(&lock->lock);
}

void AcquireSRWLockShared(SRWLOCK* lock) {
    pthread_rwlock_rdlock(&lock->lock);
}

void ReleaseSRWLockShared(SRWLOCK* lock) {
    pthread_rwlock_unlock(&lock->lock);
}
