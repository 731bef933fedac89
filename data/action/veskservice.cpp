#include "veskservice.h"
#include "veskdebug_p.h"

VeskService::VeskService() = default;

VeskService::VeskService(QString const& name, QString const& second, QString const& third,
                         QString const& protocol, VeskPluginAction const& action)
    : name(name)
    , text1(third)
    , text2(second)
    , protocol(protocol)
    , action(action)
{
}

bool VeskService::isValid() const
{
    return !name.isEmpty();
}

bool VeskService::operator==(VeskService const& other) const
{
    return name == other.name && protocol == other.protocol;
}

bool VeskService::operator!=(VeskService const& other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, VeskService const& service)
{
    debug.nospace() << "name=";
    VeskDebug::quoted(debug, service.name) << " protocol=";
    VeskDebug::quoted(debug, service.protocol);
    return debug.space();
}

VeskTextFormat::VeskTextFormat()
    : number1(0)
    , number2(0)
    , number3(0)
    , number4(0)
{
}

bool VeskTextFormat::operator==(VeskTextFormat const& other) const
{
    return number1 == other.number1 && number2 == other.number2 && string1 == other.string1
           && number3 == other.number3 && string2 == other.string2 && number4 == other.number4;
}

bool VeskTextFormat::operator!=(VeskTextFormat const& other) const
{
    return !(*this == other);
}

VeskVideoClip::VeskVideoClip()
    : value1(0)
    , value2(0)
    , value3(0)
    , value4(0)
    , text(QLatin1String(""))
{
}
