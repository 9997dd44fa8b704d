#include "platform/DBusObject.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDebug>

#include <algorithm>
#include <exception>
#include <utility>

namespace {

constexpr QLatin1String kProperties("org.freedesktop.DBus.Properties");

constexpr const char* kPropertiesXml = R"(<interface name="org.freedesktop.DBus.Properties">
<method name="Get"><arg name="interface" type="s" direction="in"/><arg name="name" type="s" direction="in"/><arg name="value" type="v" direction="out"/></method>
<method name="GetAll"><arg name="interface" type="s" direction="in"/><arg name="values" type="a{sv}" direction="out"/></method>
<method name="Set"><arg name="interface" type="s" direction="in"/><arg name="name" type="s" direction="in"/><arg name="value" type="v" direction="in"/></method>
<signal name="PropertiesChanged"><arg name="interface" type="s"/><arg name="changed" type="a{sv}"/><arg name="invalidated" type="as"/></signal>
</interface>
)";

constexpr const char* kUntoldXml =
    R"(<annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>)";

/// The element of a list with a name; null if there is none.
template <typename List, typename NameOf>
auto FindNamed(const List& list, const QString& name, NameOf nameOf) -> decltype(list.data()) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto& element) {
        return name == QLatin1String(nameOf(element));
    });
    return found == list.end() ? nullptr : &*found;
}

const DBusProperty* FindProperty(const DBusInterface& interface, const QString& name) {
    return FindNamed(interface.properties, name,
                     [](const DBusProperty& property) { return property.value.name; });
}

QDBusMessage Refuse(const QDBusMessage& message, QDBusError::ErrorType error) {
    return message.createErrorReply(error, message.member());
}

void Send(const QDBusConnection& connection, const QDBusMessage& message,
          const QDBusMessage& answer) {
    if (message.isReplyRequired())
        connection.send(answer);
}

/// Does what a request asks for and tells how it went.
template <typename Call>
QDBusMessage Answer(const QDBusMessage& message, Call call) {
    QDBusError::ErrorType result = QDBusError::Failed;
    try {
        result = call();
    } catch (const std::exception& error) {
        qWarning() << "A request of the desktop failed:" << error.what();
    }
    return result == QDBusError::NoError ? message.createReply() : Refuse(message, result);
}

QString TypesOf(const std::vector<DBusValue>& values) {
    QString types;
    for (const DBusValue& value : values)
        types += QLatin1String(value.type);
    return types;
}

QString ArgumentsXml(const std::vector<DBusValue>& values) {
    QString xml;
    for (const DBusValue& value : values)
        xml += QStringLiteral("<arg name=\"%1\" type=\"%2\"/>")
                   .arg(QLatin1String(value.name), QLatin1String(value.type));
    return xml;
}

QString InterfaceXml(const DBusInterface& interface) {
    QString xml = QStringLiteral("<interface name=\"%1\">\n").arg(QLatin1String(interface.name));
    for (const DBusMethod& method : interface.methods)
        xml += QStringLiteral("<method name=\"%1\">%2</method>\n")
                   .arg(QLatin1String(method.name), ArgumentsXml(method.arguments));
    for (const DBusSignal& signal : interface.signalList)
        xml += QStringLiteral("<signal name=\"%1\">%2</signal>\n")
                   .arg(QLatin1String(signal.name), ArgumentsXml(signal.arguments));
    for (const DBusProperty& property : interface.properties)
        xml += QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"%3\">%4</property>\n")
                   .arg(QLatin1String(property.value.name), QLatin1String(property.value.type),
                        QLatin1String(property.set ? "readwrite" : "read"),
                        QLatin1String(
                            property.changes == DBusProperty::Changes::Told ? "" : kUntoldXml));
    return xml + QStringLiteral("</interface>\n");
}

} // namespace

DBusObject::DBusObject(std::vector<DBusInterface> interfaces)
    : m_interfaces(std::move(interfaces)) {}

QVariantMap DBusObject::Properties(const DBusInterface& interface, Which which) {
    QVariantMap values;
    for (const DBusProperty& property : interface.properties) {
        if (which == Which::All || property.changes == DBusProperty::Changes::Told)
            values.insert(QLatin1String(property.value.name), property.get());
    }
    return values;
}

QString DBusObject::introspect(const QString& /*path*/) const {
    QString xml = QLatin1String(kPropertiesXml);
    for (const DBusInterface& interface : m_interfaces)
        xml += InterfaceXml(interface);
    return xml;
}

/// False leaves a request to Qt, which knows the interfaces that every object has.
bool DBusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() == kProperties) {
        Send(connection, message, AnswerProperties(message));
        return true;
    }
    for (const DBusInterface& interface : m_interfaces) {
        // A request may leave out the interface.
        if (!message.interface().isEmpty() && message.interface() != QLatin1String(interface.name))
            continue;
        const DBusMethod* method =
            FindNamed(interface.methods, message.member(), [](const auto& m) { return m.name; });
        if (!method)
            continue;
        Send(connection, message,
             message.signature() == TypesOf(method->arguments)
                 ? Answer(message, [&] { return method->call(message.arguments()); })
                 : Refuse(message, QDBusError::InvalidArgs));
        return true;
    }
    if (!Find(message.interface()))
        return false;
    Send(connection, message, Refuse(message, QDBusError::UnknownMethod));
    return true;
}

QDBusMessage DBusObject::AnswerProperties(const QDBusMessage& message) const {
    const QString request = message.member() + u' ' + message.signature();
    if (request == QLatin1String("Set ssv"))
        return Set(message);
    const bool isAll = request == QLatin1String("GetAll s");
    if (!isAll && request != QLatin1String("Get ss"))
        return Refuse(message, QDBusError::UnknownMethod);
    const DBusInterface* interface = Find(message.arguments()[0].toString());
    if (!interface)
        return Refuse(message, QDBusError::UnknownInterface);
    if (isAll)
        return message.createReply(Properties(*interface, Which::All));
    const DBusProperty* property = FindProperty(*interface, message.arguments()[1].toString());
    if (!property)
        return Refuse(message, QDBusError::UnknownProperty);
    return message.createReply(QVariant::fromValue(QDBusVariant(property->get())));
}

QDBusMessage DBusObject::Set(const QDBusMessage& message) const {
    const QVariantList arguments = message.arguments();
    const DBusInterface* interface = Find(arguments[0].toString());
    if (!interface)
        return Refuse(message, QDBusError::UnknownInterface);
    const DBusProperty* property = FindProperty(*interface, arguments[1].toString());
    if (!property)
        return Refuse(message, QDBusError::UnknownProperty);
    if (!property->set)
        return Refuse(message, QDBusError::PropertyReadOnly);
    const QVariant value = arguments[2].value<QDBusVariant>().variant();
    if (value.metaType() != QDBusMetaType::signatureToMetaType(property->value.type))
        return Refuse(message, QDBusError::InvalidArgs);
    return Answer(message, [&] { return property->set(value); });
}

const DBusInterface* DBusObject::Find(const QString& name) const {
    return FindNamed(m_interfaces, name, [](const auto& interface) { return interface.name; });
}
