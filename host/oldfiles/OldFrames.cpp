#include "host/oldfiles/OldFrames.h"

#include <QDataStream>
#include <QIODevice>

namespace tallyroom::host::OldFrames {

namespace {

constexpr quint32 largestFrame = 1U << 30; // bytes; more than the reader's memory can hold

OldFileRefused garbled() {
    return {OldRefusal::Damaged, QStringLiteral("what was read of it makes no sense.")};
}

void put(QDataStream& out, const OldValue& value);
void get(QDataStream& in, OldValue& value);
template<class Value>
void put(QDataStream& out, const std::vector<Value>& values);
template<class Value>
void get(QDataStream& in, std::vector<Value>& values);

void put(QDataStream& out, const OldColumn& column) {
    out << column.name << static_cast<quint8>(column.type) << qint32(column.width);
}

void get(QDataStream& in, OldColumn& column) {
    quint8 type = 0;
    qint32 width = 0;
    in >> column.name >> type >> width;
    if (type > static_cast<quint8>(OldType::Binary) || width < 0)
        throw garbled();
    column.type = static_cast<OldType>(type);
    column.width = width;
}

void put(QDataStream& out, const OldTable& table) {
    out << table.name;
    put(out, table.columns);
}

void get(QDataStream& in, OldTable& table) {
    in >> table.name;
    get(in, table.columns);
}

void put(QDataStream& out, const End& end) {
    out << end.countedRows;
}
void get(QDataStream& in, End& end) {
    in >> end.countedRows;
}

void put(QDataStream& out, const OldFileRefused& refused) {
    out << static_cast<quint8>(refused.reason) << refused.text;
}
void get(QDataStream& in, OldFileRefused& refused) {
    quint8 reason = 0;
    in >> reason >> refused.text;
    refused.reason = static_cast<OldRefusal>(reason);
}

void put(QDataStream&, std::monostate) {}
void put(QDataStream& out, Date date) {
    out << date.serial;
}
void put(QDataStream& out, const OldDecimal& decimal) {
    out << decimal.digits;
}
template<class Plain>
requires requires(QDataStream& out, Plain value) {
    out << value;
}
void put(QDataStream& out, const Plain& value) {
    out << value;
}

void put(QDataStream& out, const OldValue& value) {
    out << static_cast<quint8>(value.index());
    std::visit([&](const auto& held) { put(out, held); }, value);
}

void get(QDataStream&, std::monostate&) {}
void get(QDataStream& in, Date& date) {
    in >> date.serial;
}
void get(QDataStream& in, OldDecimal& decimal) {
    in >> decimal.digits;
}
template<class Plain>
requires requires(QDataStream& in, Plain& value) {
    in >> value;
}
void get(QDataStream& in, Plain& value) {
    in >> value;
}

// The alternative of that index, read.
template<std::size_t At = 0, class... Alternatives>
void getAlternative(QDataStream& in, quint8 index, std::variant<Alternatives...>& value) {
    if constexpr (At < sizeof...(Alternatives)) {
        if (index == At)
            get(in, value.template emplace<At>());
        else
            getAlternative<At + 1>(in, index, value);
    } else {
        throw garbled();
    }
}

void get(QDataStream& in, OldValue& value) {
    quint8 index = 0;
    in >> index;
    getAlternative(in, index, value);
}

template<class Value>
void put(QDataStream& out, const std::vector<Value>& values) {
    out << static_cast<quint32>(values.size());
    for (const Value& value : values)
        put(out, value);
}

// More than sound files have: what takes a byte of a frame takes many here.
template<class Value>
constexpr quint32 mostOf = 32'768; // tables, or rows of a portion
template<>
constexpr quint32 mostOf<OldColumn> = 255;
template<>
constexpr quint32 mostOf<OldValue> = 255;

// Grows with what is there, whatever number is claimed.
template<class Value>
void get(QDataStream& in, std::vector<Value>& values) {
    quint32 size = 0;
    in >> size;
    if (size > mostOf<Value>)
        throw garbled();
    for (quint32 at = 0; at < size; ++at) {
        if (in.status() != QDataStream::Ok)
            throw garbled();
        get(in, values.emplace_back());
    }
}

Frame parsed(const QByteArray& bytes) {
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_4);
    quint8 kind = 0;
    in >> kind;
    Frame frame;
    getAlternative(in, kind, frame);
    if (in.status() != QDataStream::Ok || !in.atEnd())
        throw garbled();
    return frame;
}

} // namespace

QByteArray written(const Frame& frame) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_4);
    out << quint32(0) << static_cast<quint8>(frame.index());
    std::visit([&](const auto& held) { put(out, held); }, frame);
    out.device()->seek(0);
    out << static_cast<quint32>(bytes.size() - qsizetype(sizeof(quint32)));
    return bytes;
}

std::optional<Frame> taken(QByteArray& bytes) {
    constexpr qsizetype header = sizeof(quint32);
    if (bytes.size() < header)
        return std::nullopt;
    quint32 size = 0;
    QDataStream(bytes) >> size;
    if (size > largestFrame)
        throw garbled();
    if (bytes.size() - header < qsizetype(size))
        return std::nullopt;
    Frame frame = parsed(bytes.mid(header, size));
    bytes.remove(0, header + size);
    return frame;
}

} // namespace tallyroom::host::OldFrames
