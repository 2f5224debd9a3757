// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/jsonconversion.h>
#include <vorrel/data/properties/propertychange.h>

#include <QtCore/QJsonObject>
#include <QtCore/QMap>

namespace vo::data {

template <typename T>
class MapProperty;

/// The edit of a MapProperty<T>.
template <typename T>
using MapPropertyChange = PropertyChange<MapProperty<T>, QMap<QString, T>>;

/// A stored field that holds values by text keys. An edit changes one entry.
template <typename T>
class MapProperty : public PropertyBase
{
public:
    using Map = QMap<QString, T>;

    MapProperty(const char *name, Document *document)
        : PropertyBase(name, document)
    { }

    /// The whole map, empty below ReadAccess.
    [[nodiscard]] Map get() const { return canRead() ? m_values : Map(); }

    /// Sets one entry. False below WriteAccess and when the entry has an equal value.
    bool set(const QString &key, const T &value)
    {
        const auto present = m_values.constFind(key);
        if (!canWrite() || (present != m_values.constEnd() && valuesEqual(*present, value))) {
            return false;
        }
        Map values = m_values;
        values.insert(key, value);
        edit(values);
        return true;
    }

    /// Takes one entry away. False below WriteAccess and when there is none.
    bool remove(const QString &key)
    {
        if (!canWrite() || !m_values.contains(key)) {
            return false;
        }
        Map values = m_values;
        values.remove(key);
        edit(values);
        return true;
    }

    [[nodiscard]] int type() const override { return Value; }

    void fromJson(const QJsonValue &json) override
    {
        Map values;
        const QJsonObject object = json.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            values.insert(it.key(), convertFromJson<T>(it.value()));
        }
        if (!equal(values, m_values)) {
            m_values = values;
            notify();
        }
    }

    [[nodiscard]] QJsonValue toJson() const override { return toObject(m_values); }

    /// The JSON form of the map, empty below ReadAccess.
    [[nodiscard]] QJsonObject object() const { return toObject(get()); }

    void copy(PropertyBase *source) override
    {
        const Map values = static_cast<MapProperty *>(source)->get();
        if (canWrite() && !equal(values, m_values)) {
            edit(values);
        }
    }

private:
    friend class PropertyChange<MapProperty<T>, Map>;

    static QJsonObject toObject(const Map &values)
    {
        QJsonObject object;
        for (auto it = values.begin(); it != values.end(); ++it) {
            object.insert(it.key(), convertToJson<T>(it.value()));
        }
        return object;
    }

    static bool equal(const Map &a, const Map &b)
    {
        return a.size() == b.size()
            && std::equal(a.keyValueBegin(), a.keyValueEnd(), b.keyValueBegin(),
                          [](const auto &x, const auto &y) {
                              return x.first == y.first && valuesEqual(x.second, y.second);
                          });
    }

    void edit(const Map &values)
    {
        const Map old = m_values;
        m_values = values;
        recordApplied(
            [&] { return std::make_unique<MapPropertyChange<T>>(this, d_(), old, values); });
        notifyAndMarkDirty();
    }

    void assign(const Map &values)
    {
        m_values = values;
        notifyAndMarkDirty();
    }

    Map m_values;
};

} // namespace vo::data
