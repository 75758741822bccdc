#include "app/QtSettings.h"

#include <QByteArray>
#include <QFile>
#include <QStringList>

namespace veltrano {

namespace {

/// Damaged files that are kept; whoever has more of them has the oldest ones for a reason.
constexpr int kMostCopies = 100;

QString nameOfKey(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

/// Text where that keeps every byte, so that people can read the file; else the bytes themselves.
QVariant variantOfBytes(std::string_view bytes) {
    const QByteArray raw(bytes.data(), static_cast<qsizetype>(bytes.size()));
    const QString text = QString::fromUtf8(raw);
    // Readers take the first mark of byte order for none of the text.
    if (text.toUtf8() == raw && !text.contains(QChar::ByteOrderMark))
        return text;
    return raw;
}

std::optional<std::string> bytesOfVariant(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString().toStdString();
    case QMetaType::QByteArray:
        return value.toByteArray().toStdString();
    default:
        return std::nullopt;
    }
}

/// What we write is text in UTF-8 without a NUL.
bool isOurKindOfText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true; // There is nothing, or nothing that we may touch.
    const QByteArray content = file.readAll();
    return content.isValidUtf8() && !content.contains('\0');
}

} // namespace

QtSettings::QtSettings(const std::string& file)
    : m_path(QFile::decodeName(QByteArray::fromStdString(file))),
      m_bPathIsText(QFile::encodeName(m_path).toStdString() == file),
      m_settings(m_path, QSettings::IniFormat) {
    static_cast<void>(m_settings.allKeys()); // Lines are looked at only when they are asked for.
    m_bDamaged = m_settings.status() == QSettings::FormatError || !isOurKindOfText(m_path);
}

QtSettings::Stored QtSettings::storedValue(std::string_view key) const {
    const QString name = nameOfKey(key);
    if (const auto held = m_heldBack.find(name); held != m_heldBack.end())
        return held->second;
    return {m_settings.contains(name), m_settings.value(name)};
}

std::optional<QString> QtSettings::textForKey(std::string_view key) const {
    const QVariant value = storedValue(key).value;
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> QtSettings::boolForKey(std::string_view key) const {
    const auto text = textForKey(key);
    if (text == QLatin1String("true"))
        return true;
    return text == QLatin1String("false") ? std::optional(false) : std::nullopt;
}

std::optional<std::int64_t> QtSettings::integerForKey(std::string_view key) const {
    const auto text = textForKey(key);
    bool isNumber = false;
    const qlonglong number = text ? text->toLongLong(&isNumber) : 0;
    return isNumber ? std::optional<std::int64_t>(number) : std::nullopt;
}

std::optional<double> QtSettings::doubleForKey(std::string_view key) const {
    const auto text = textForKey(key);
    bool isNumber = false;
    const double number = text ? text->toDouble(&isNumber) : 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<std::string> QtSettings::stringForKey(std::string_view key) const {
    return bytesOfVariant(storedValue(key).value);
}

std::optional<std::vector<std::string>> QtSettings::arrayForKey(std::string_view key) const {
    const Stored stored = storedValue(key);
    if (!stored.isThere)
        return std::nullopt;
    std::vector<std::string> result;
    if (!stored.value.isValid())
        return result;
    if (auto single = bytesOfVariant(stored.value))
        return std::vector{std::move(*single)};
    const bool isList =
        stored.value.typeId() == QMetaType::QStringList || stored.value.typeId() == QMetaType::QVariantList;
    if (!isList)
        return std::nullopt;
    for (const QVariant& element : stored.value.toList()) {
        auto bytes = bytesOfVariant(element);
        if (!bytes)
            return std::nullopt;
        result.push_back(std::move(*bytes));
    }
    return result;
}

void QtSettings::setBool(std::string_view key, bool value) {
    store(key, {true, value ? QStringLiteral("true") : QStringLiteral("false")});
}

void QtSettings::setInteger(std::string_view key, std::int64_t value) {
    store(key, {true, QString::number(qlonglong{value})});
}

void QtSettings::setDouble(std::string_view key, double value) {
    constexpr int kAllDigits = 17;
    store(key, {true, QString::number(value, 'g', kAllDigits)});
}

void QtSettings::setString(std::string_view key, std::string_view value) {
    store(key, {true, variantOfBytes(value)});
}

void QtSettings::setArray(std::string_view key, const std::vector<std::string>& value) {
    QVariantList elements;
    for (const std::string& bytes : value)
        elements.append(variantOfBytes(bytes));
    if (elements.size() == 1)
        store(key, {true, elements.front()});
    else
        store(key, {true, elements.isEmpty() ? QVariant() : QVariant(elements)});
}

void QtSettings::remove(std::string_view key) {
    store(key, {});
}

void QtSettings::store(std::string_view key, const Stored& stored) {
    if (mayBeWritten())
        writeThrough(nameOfKey(key), stored);
    else
        m_heldBack[nameOfKey(key)] = stored;
}

void QtSettings::writeThrough(const QString& key, const Stored& stored) {
    if (stored.isThere)
        m_settings.setValue(key, stored.value);
    else
        m_settings.remove(key);
}

bool QtSettings::synchronize() {
    if (!mayBeWritten())
        return false;
    for (const auto& [key, stored] : m_heldBack)
        writeThrough(key, stored);
    m_heldBack.clear();
    // A second face of the same file: the first one never forgets that something failed once.
    QSettings face(m_path, QSettings::IniFormat);
    face.sync();
    return face.status() == QSettings::NoError;
}

bool QtSettings::mayBeWritten() {
    return m_bPathIsText && keepDamagedFile();
}

/// Whether nothing would be lost by writing the file.
bool QtSettings::keepDamagedFile() {
    if (!m_bDamaged)
        return true;
    const QString copy = m_path + QStringLiteral(".damaged");
    for (int number = 1; number <= kMostCopies && m_bDamaged; ++number) {
        const QString name = number == 1 ? copy : copy + QLatin1Char('-') + QString::number(number);
        if (!QFile::exists(name))
            m_bDamaged = !QFile::copy(m_path, name);
    }
    return !m_bDamaged;
}

} // namespace veltrano
