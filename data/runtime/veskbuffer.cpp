#include "veskbuffer.h"
#include "vesksync_p.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QMutex>
#include <QtCore/QWaitCondition>

namespace {

// The next buffer id. Atomic, so that buffers made in several threads at
// once still get distinct ids.
QAtomicInt maxId(0);

int nextId()
{
    return maxId.fetchAndAddRelaxed(1);
}

} // namespace

VeskBuffer::VeskBuffer()
    : size(0)
    , data(nullptr)
    , ownsData(false)
    , inUse(false)
    , mutex(nullptr)
    , condition(nullptr)
    , id(nextId())
    , releases(0)
{
}

VeskBuffer::VeskBuffer(long size, unsigned char* data, bool ownsData)
    : size(size)
    , data(data)
    , ownsData(ownsData)
    , inUse(false)
    , mutex(nullptr)
    , condition(nullptr)
    , id(nextId())
    , releases(0)
{
}

VeskBuffer::VeskBuffer(long size, bool synchronized)
    : size(0)
    , data(nullptr)
    , ownsData(true)
    , inUse(false)
    , mutex(nullptr)
    , condition(nullptr)
    , id(nextId())
    , releases(0)
{
    allocate(size);
    if (synchronized) {
        mutex = new QMutex;
        condition = new QWaitCondition;
    }
}

VeskBuffer::~VeskBuffer()
{
    if (ownsData)
        delete[] data;
    delete condition;
    delete mutex;
}

void VeskBuffer::allocate(long bytes)
{
    size = bytes;
    data = bytes > 0 ? new unsigned char[bytes] : nullptr;
    ownsData = true;
}

bool VeskBuffer::isValid() const
{
    return size >= 1 && data;
}

void VeskBuffer::resize(long size)
{
    if (ownsData) {
        if (size == this->size)
            return;
        delete[] data;
        data = nullptr;
    }
    allocate(size);
}

void VeskBuffer::resize(long size, unsigned char* data, bool ownsData)
{
    if (this->ownsData) {
        if (size == this->size)
            return;
        delete[] this->data;
    }
    this->data = data;
    this->size = size;
    this->ownsData = ownsData;
}

long VeskBuffer::getSize() const
{
    return size;
}

unsigned char* VeskBuffer::getData() const
{
    return data;
}

int VeskBuffer::getId() const
{
    return id;
}

void VeskBuffer::setInUse()
{
    if (!mutex) {
        inUse = true;
        return;
    }
    QMutexLocker locker(mutex);
    inUse = true;
}

void VeskBuffer::release()
{
    if (!mutex) {
        inUse = false;
        return;
    }
    QMutexLocker locker(mutex);
    inUse = false;
    ++releases;
    condition->wakeAll();
}

bool VeskBuffer::isInUse() const
{
    if (!mutex)
        return inUse;
    QMutexLocker locker(mutex);
    return inUse;
}

void VeskBuffer::waitForRelease()
{
    if (!mutex)
        return;
    QMutexLocker locker(mutex);
    if (!inUse)
        return;
    // Checked and waited for under the lock, so a release cannot slip in
    // between the test and the sleep.
    quint32 const seen = releases;
    while (releases == seen)
        VeskSync::wait(*condition, *mutex);
}

VeskRingBuffer::VeskRingBuffer()
    : nextIndex(0)
    , bufferCount(0)
    , bufferSize(0)
{
}

VeskRingBuffer::VeskRingBuffer(int count, int size)
    : nextIndex(0)
    , bufferCount(0)
    , bufferSize(0)
{
    create(count, size);
}

VeskRingBuffer::~VeskRingBuffer()
{
    remove();
}

void VeskRingBuffer::create(int count, int size)
{
    bufferCount = qMax(count, 0);
    nextIndex = 0;
    bufferSize = size;
    buffers.reserve(buffers.size() + bufferCount);
    for (int i = 0; i < bufferCount; ++i)
        buffers.append(new VeskBuffer(size, true));
}

VeskBuffer* VeskRingBuffer::getBuffer()
{
    // Buffers left from an earlier create() beyond count() are not handed out.
    int const limit = qMin(bufferCount, int(buffers.size()));
    if (limit < 1)
        return nullptr;
    if (nextIndex >= limit)
        nextIndex = 0;
    VeskBuffer* const buffer = buffers.at(nextIndex);
    buffer->waitForRelease();
    buffer->setInUse();
    ++nextIndex;
    return buffer;
}

void VeskRingBuffer::resize(int count, int size)
{
    if (count == bufferCount && size == bufferSize)
        return;
    remove();
    create(count, size);
}

void VeskRingBuffer::remove()
{
    waitForRelese();
    qDeleteAll(buffers);
    buffers.clear();
}

int VeskRingBuffer::count() const
{
    return bufferCount;
}

int VeskRingBuffer::getSize() const
{
    return bufferSize;
}

int VeskRingBuffer::countUsed() const
{
    int used = 0;
    for (VeskBuffer const* buffer : buffers) {
        if (buffer->isInUse())
            ++used;
    }
    return used;
}

bool VeskRingBuffer::isUnused()
{
    for (VeskBuffer const* buffer : buffers) {
        if (buffer->isInUse())
            return false;
    }
    return true;
}

void VeskRingBuffer::waitForRelese()
{
    for (VeskBuffer* buffer : buffers)
        buffer->waitForRelease();
}
