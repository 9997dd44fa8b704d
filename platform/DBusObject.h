#pragma once

#include <QDBusError>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <vector>

/// An argument or a property as others see it: a name, and a type in the bus's own notation ("s").
struct DBusValue {
    const char* name;
    const char* type;
};

/// Called with arguments of the declared types. It answers nothing but whether it did its work.
struct DBusMethod {
    const char* name;
    std::vector<DBusValue> arguments;
    std::function<QDBusError::ErrorType(const QVariantList& arguments)> call;
};

struct DBusSignal {
    const char* name;
    std::vector<DBusValue> arguments;
};

struct DBusProperty {
    DBusValue value;
    std::function<QVariant()> get;

    /// Takes a value of the declared type. None: the property can only be read.
    std::function<QDBusError::ErrorType(const QVariant& value)> set = {};

    enum class Changes { Told, NotTold };
    Changes changes = Changes::Told;
};

struct DBusInterface {
    const char* name;
    std::vector<DBusMethod> methods;
    std::vector<DBusSignal> signalList;
    std::vector<DBusProperty> properties;
};

/// An object that others on a bus talk to. It is made of tables: what is asked of it is checked
/// against them, and what it tells of itself is read from them.
///
/// Thread: that on which it was made.
/// Errors: what is unknown, of another type, or throws is answered with an error.
class DBusObject : public QDBusVirtualObject {
public:
    explicit DBusObject(std::vector<DBusInterface> interfaces);

    [[nodiscard]] const std::vector<DBusInterface>& Interfaces() const { return m_interfaces; }

    /// All properties of an interface, or those alone of which changes are told.
    enum class Which { All, Told };
    [[nodiscard]] static QVariantMap Properties(const DBusInterface& interface, Which which);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QDBusMessage AnswerProperties(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage Set(const QDBusMessage& message) const;
    [[nodiscard]] const DBusInterface* Find(const QString& name) const;

    std::vector<DBusInterface> m_interfaces;
};
