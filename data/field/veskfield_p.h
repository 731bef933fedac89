#ifndef VESKFIELD_P_H
#define VESKFIELD_P_H

// Internal to the library: the shared record behind VeskField.

#include "veskfield.h"
#include "veskpluginaction.h"

#include <QtCore/QAtomicInt>

#include <cstring>

// Eight bytes read as an int, a double or a bool, the int and the bool at
// the start. Which view is meaningful depends on the field's kind; going
// through memcpy keeps a read of another view defined.
union VeskFieldSlot
{
    qint32 i;
    double d;
    bool b;

    int toInt() const { return load<qint32>(); }
    double toDouble() const { return load<double>(); }
    // Any non-zero first byte reads as true, so a slot that last held an int
    // never yields an invalid bool.
    bool toBool() const { return load<unsigned char>() != 0; }

    void setInt(int value) { store<qint32>(value); }
    void setDouble(double value) { store<double>(value); }
    void setBool(bool value) { store<unsigned char>(value ? 1 : 0); }

private:
    template<typename T> T load() const
    {
        T value;
        std::memcpy(&value, static_cast<void const*>(this), sizeof(T));
        return value;
    }
    template<typename T> void store(T value)
    {
        std::memcpy(static_cast<void*>(this), &value, sizeof(T));
    }
};

class VeskFieldPrivate
{
public:
    explicit VeskFieldPrivate(VeskField::Type type);
    // A private copy for a detaching handle: everything but the count.
    VeskFieldPrivate(VeskFieldPrivate const& other);
    VeskFieldPrivate& operator=(VeskFieldPrivate const&) = delete;

    QAtomicInt ref;
    VeskField::Type type;
    QString label;
    QString id;
    QString group;
    QString suffix;
    VeskFieldSlot max;
    VeskFieldSlot min;
    VeskFieldSlot value;
    QStringList comboBoxIds;
    QStringList comboBoxLabels;
    QString text;
    VeskPluginAction action;
    bool readOnly;
    bool visible;
    bool pressed;
    QByteArray imgData;
    QStringList depends;
};

#endif // VESKFIELD_P_H
