#ifndef VESKBUFFER_H
#define VESKBUFFER_H

/// \file
/// VeskBuffer and VeskRingBuffer, media data handed between threads.

#include "veskdata_global.h"
#include "veskgarbagecollector.h"

#include <QtCore/QVector>

class QMutex;
class QWaitCondition;

/// One block of bytes with a process-wide id. A synchronised buffer also has
/// an in-use flag under a lock: the producer marks it in use when it hands it
/// out, a consumer in any thread releases it, and the producer can wait for
/// that release. Buffers are handled by pointer and never copied.
class VESK_DATA_EXPORT VeskBuffer
{
public:
    /// Empty: no bytes, not synchronised.
    VeskBuffer();
    /// Wraps size bytes at data; deletes them with delete[] later only when
    /// ownsData is true.
    VeskBuffer(long size, unsigned char* data, bool ownsData);
    /// Allocates size bytes (not cleared) and owns them; a size below 1
    /// allocates nothing.
    VeskBuffer(long size, bool synchronized);
    /// Frees the bytes when the buffer owns them.
    ~VeskBuffer();

    /// At least one byte at a non-null address.
    bool isValid() const;

    /// A buffer that owns its bytes keeps them when the size does not change;
    /// otherwise the old bytes (when owned) are freed and new ones allocated.
    /// When that allocation throws, the buffer is left empty: size 0 and no
    /// data.
    void resize(long size);
    /// As above, but the new bytes are the given ones. An owning buffer of the
    /// same size keeps its own bytes and ignores data and ownsData.
    void resize(long size, unsigned char* data, bool ownsData);

    /// The number of bytes; 0 for an empty buffer.
    long getSize() const;
    /// The bytes; null for an empty buffer. The buffer keeps ownership.
    unsigned char* getData() const;
    /// The process-wide id given at construction.
    int getId() const;

    ///@{
    /// The in-use protocol. On a buffer that is not synchronised the flag is
    /// read and written without a lock, and waitForRelease() returns at once.
    void setInUse();
    /// Clears the flag and wakes whoever waits for it.
    void release();
    /// Whether the flag is set.
    bool isInUse() const;
    /// Returns at once when the buffer is not in use, otherwise after the
    /// next release().
    void waitForRelease();
    ///@}

private:
    Q_DISABLE_COPY(VeskBuffer)

    void allocate(long bytes);
    void dropData();

    long size;
    unsigned char* data;
    bool ownsData;
    bool inUse;
    QMutex* mutex;
    QWaitCondition* condition;
    int id;
    /// Counts the releases, so that a waiter can tell a real release from a
    /// spurious wake-up of the condition.
    quint32 releases;
};

/// A fixed number of equal synchronised buffers handed out in strict rotation
/// by one producer thread: getBuffer() waits for the release of the buffer
/// whose turn it is rather than skip to a free one. Consumers release buffers
/// from any thread. A producer that stops hands the ring to the garbage
/// collector, which deletes it once every buffer is released.
///
/// The ring has no lock of its own: only one thread at a time may call
/// getBuffer(), create(), resize() or remove().
class VESK_DATA_EXPORT VeskRingBuffer : public VeskRemovable
{
public:
    /// A ring without buffers; create() adds them.
    VeskRingBuffer();
    /// A ring of count synchronised buffers of size bytes each.
    VeskRingBuffer(int count, int size);
    /// Waits until every buffer is released.
    ~VeskRingBuffer() override;

    /// Appends count synchronised buffers of size bytes each and starts the
    /// rotation again at the first buffer. When an allocation throws, nothing
    /// is appended and the ring is left as it was.
    void create(int count, int size);
    /// The buffer whose turn it is, marked in use; null when the ring has no
    /// buffer.
    VeskBuffer* getBuffer();
    /// Rebuilds the ring, after every buffer is released, unless the count and
    /// the size stay the same.
    void resize(int count, int size);
    /// Waits until every buffer is released, then deletes them all.
    void remove();

    /// The count given to the last create(), kept as given even when it is
    /// negative.
    int count() const;
    /// The size of each buffer in bytes.
    int getSize() const;
    /// The number of buffers in use.
    int countUsed() const;
    /// True when no buffer is in use.
    bool isUnused() override;
    /// Returns when every buffer has been seen released, in order.
    void waitForRelese();

private:
    Q_DISABLE_COPY(VeskRingBuffer)

    QVector<VeskBuffer*> buffers;
    int nextIndex;
    int bufferCount;
    int bufferSize;
};

#endif // VESKBUFFER_H
