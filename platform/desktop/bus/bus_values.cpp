#include "platform/desktop/bus/bus_values.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QVariantMap>
#include <algorithm>
#include <iterator>

namespace platform::desktop {

namespace {

struct Converter {
    QVariant operator()(std::monostate) const { return {}; }
    QVariant operator()(bool value) const { return value; }
    QVariant operator()(std::int32_t value) const { return value; }
    QVariant operator()(std::uint32_t value) const { return value; }
    QVariant operator()(std::int64_t value) const { return qlonglong{value}; }
    QVariant operator()(double value) const { return value; }
    QVariant operator()(const std::string& text) const { return QString::fromStdString(text); }
    QVariant operator()(const BusPath& path) const {
        return QVariant::fromValue(QDBusObjectPath(QString::fromStdString(path.text)));
    }
    QVariant operator()(const BusTexts& texts) const {
        QStringList list;
        for (const std::string& text : texts) {
            list.append(QString::fromStdString(text));
        }
        return list;
    }
    QVariant operator()(const BusTable& table) const {
        QVariantMap map;
        for (const BusEntry& entry : table) {
            map.insert(QString::fromStdString(entry.name), ToVariant(entry.value));
        }
        return map;
    }
};

BusTexts FromList(const QStringList& list) {
    BusTexts texts;
    for (const QString& text : list) {
        texts.push_back(text.toStdString());
    }
    return texts;
}

}  // namespace

QVariant ToVariant(const BusValue& value) {
    return std::visit(Converter(), value.value);
}

QVariantList ToVariants(const BusValues& values) {
    QVariantList variants;
    std::transform(values.begin(), values.end(), std::back_inserter(variants), ToVariant);
    return variants;
}

BusValue FromVariant(const QVariant& variant) {
    if (variant.metaType() == QMetaType::fromType<QDBusVariant>()) {
        return FromVariant(variant.value<QDBusVariant>().variant());
    }
    if (variant.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return {BusPath{variant.value<QDBusObjectPath>().path().toStdString()}};
    }
    switch (variant.typeId()) {
        case QMetaType::Bool:
            return {variant.toBool()};
        case QMetaType::Int:
            return {std::int32_t{variant.toInt()}};
        case QMetaType::UInt:
            return {std::uint32_t{variant.toUInt()}};
        case QMetaType::LongLong:
            return {std::int64_t{variant.toLongLong()}};
        case QMetaType::Double:
            return {variant.toDouble()};
        case QMetaType::QString:
            return {variant.toString().toStdString()};
        case QMetaType::QStringList:
            return {FromList(variant.toStringList())};
        default:
            return {};
    }
}

BusValues FromVariants(const QVariantList& variants) {
    BusValues values;
    std::transform(variants.begin(), variants.end(), std::back_inserter(values), FromVariant);
    return values;
}

}  // namespace platform::desktop
