#include "veskbuffer.h"
#include "vesksync_p.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QMutex>
#include <QtCore/QWaitCondition>

#include <memory>
#include <vector>

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
    if (!synchronized)
        return;
    // The destructor does not run when the constructor throws.
    try {
        mutex = new QMutex;
        condition = new QWaitCondition;
    } catch (...) {
        delete mutex;
        delete[] data;
        throw;
    }
}

VeskBuffer::~VeskBuffer()
{
    if (ownsData)
        delete[] data;
    delete condition;
    delete mutex;
}

// Expects no bytes held. Should the allocation throw, the buffer stays
// empty (size 0, no data), so size and data always agree.
void VeskBuffer::allocate(long bytes)
{
    size = 0;
    data = nullptr;
    ownsData = true;
    if (bytes < 1) {
        size = bytes;
        return;
    }
    data = new unsigned char[bytes];
    size = bytes;
}

void VeskBuffer::dropData()
{
    if (ownsData)
        delete[] data;
    data = nullptr;
    size = 0;
}

bool VeskBuffer::isValid() const
{
    return size >= 1 && data;
}

void VeskBuffer::resize(long size)
{
    if (ownsData && size == this->size)
        return;
    dropData();
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
    // All or nothing: when an allocation throws, the buffers made so far go
    // and the ring stays as it was.
    int const wanted = qMax(count, 0);
    std::vector<std::unique_ptr<VeskBuffer>> made;
    made.reserve(size_t(wanted));
    for (int i = 0; i < wanted; ++i)
        made.push_back(std::make_unique<VeskBuffer>(size, true));
    buffers.reserve(buffers.size() + wanted);
    for (std::unique_ptr<VeskBuffer>& buffer : made)
        buffers.append(buffer.release());
    // The count is kept as given, a negative one too; getBuffer() hands out
    // nothing while it is below one.
    bufferCount = count;
    nextIndex = 0;
    bufferSize = size;
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
