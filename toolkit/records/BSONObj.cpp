#include "host/records/BSONObj.h"

#include <bson/bson.h>

#include <QString>

#include <locale.h>

namespace bson {

/// The document itself, released with its owner.
struct BSONObj::Document {
    Document() : mBson(bson_new()) {}
    explicit Document(bson_t *owned) : mBson(owned) {}
    ~Document() { bson_destroy(mBson); }
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;
    static BSONElement read(const bson_iter_t &field);
    bson_t *mBson;
};

namespace {

/// Numbers are read and written with a point while it lives, whatever the locale; this thread only.
class PointLocale {
public:
    PointLocale() : mOuter(uselocale(point())) {}
    ~PointLocale() { uselocale(mOuter); }
    PointLocale(const PointLocale &) = delete;
    PointLocale &operator=(const PointLocale &) = delete;

private:
    static locale_t point() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t mOuter;
};

/// Reads one document after another from a text.
class JsonReader {
public:
    explicit JsonReader(const std::string &text) : mReader(bson_json_data_reader_new(true, 0)) {
        bson_json_data_reader_ingest(mReader, reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    ~JsonReader() { bson_json_reader_destroy(mReader); }
    JsonReader(const JsonReader &) = delete;
    JsonReader &operator=(const JsonReader &) = delete;
    /// 1 for a document, 0 for the end of the text, -1 for an error.
    int read(bson_t *document, bson_error_t *error) { return bson_json_reader_read(mReader, document, error); }

private:
    bson_json_reader_t *mReader;
};

/// Text that a document may hold: invalid bytes become the replacement character.
std::string validText(const std::string &text) {
    const bool valid = bson_utf8_validate(text.data(), text.size(), true);
    return valid ? text : QString::fromUtf8(text.data(), static_cast<int>(text.size())).toStdString();
}

/// Likewise a key, which ends at its first zero.
std::string validKey(const std::string &key) {
    return validText(key.substr(0, key.find('\0')));
}

int length(const std::string &text) {
    return static_cast<int>(text.size());
}

} // namespace

BSONObj::BSONObj() : mDocument(std::make_shared<const Document>()) {}

BSONObj::BSONObj(std::shared_ptr<const Document> document) : mDocument(std::move(document)) {}

BSONObj BSONObj::fromJson(const std::string &text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos || text[first] != '{') {
        throw BSONError("not a JSON object");
    }
    const PointLocale pointLocale;
    JsonReader reader(text);
    bson_error_t error{};
    auto document = std::make_shared<Document>();
    if (reader.read(document->mBson, &error) != 1) {
        throw BSONError(error.message);
    }
    const Document rest;
    if (reader.read(rest.mBson, &error) != 0) {
        throw BSONError("text behind the JSON object");
    }
    return BSONObj(std::move(document));
}

std::string BSONObj::jsonString() const {
    const PointLocale pointLocale;
    std::size_t size = 0;
    char *text = bson_as_relaxed_extended_json(mDocument->mBson, &size);
    const std::string result = text ? std::string(text, size) : std::string("{ }");
    bson_free(text);
    return result;
}

bool BSONObj::isEmpty() const {
    return bson_empty(mDocument->mBson);
}

bool BSONObj::hasField(const std::string &key) const {
    bson_iter_t field;
    return bson_iter_init_find_w_len(&field, mDocument->mBson, key.data(), length(key));
}

BSONElement BSONObj::Document::read(const bson_iter_t &field) {
    const auto nested = [](const uint8_t *data, uint32_t size) {
        bson_t *copy = bson_new_from_data(data, size);
        return copy ? BSONObj(std::make_shared<const Document>(copy)) : BSONObj();
    };
    const uint8_t *data = nullptr;
    uint32_t size = 0;
    BSONElement::Value value;
    switch (bson_iter_type(&field)) {
    case BSON_TYPE_UTF8: {
        const char *text = bson_iter_utf8(&field, &size);
        value = std::string(text, size);
        break;
    }
    case BSON_TYPE_INT32:
        value = static_cast<int>(bson_iter_int32(&field));
        break;
    case BSON_TYPE_INT64:
        value = static_cast<long long>(bson_iter_int64(&field));
        break;
    case BSON_TYPE_DOUBLE:
        value = bson_iter_double(&field);
        break;
    case BSON_TYPE_DOCUMENT:
        bson_iter_document(&field, &size, &data);
        value = nested(data, size);
        break;
    case BSON_TYPE_ARRAY:
        bson_iter_array(&field, &size, &data);
        value = BSONElement::Array{nested(data, size)};
        break;
    default:
        break;
    }
    return BSONElement(bson_iter_key(&field), std::move(value));
}

BSONElement BSONObj::getField(const std::string &key) const {
    bson_iter_t field;
    if (!bson_iter_init_find_w_len(&field, mDocument->mBson, key.data(), length(key))) {
        throw BSONError("field not found, expected type: \"" + key + "\"");
    }
    return Document::read(field);
}

std::vector<BSONElement> BSONObj::elements() const {
    std::vector<BSONElement> all;
    bson_iter_t field;
    if (bson_iter_init(&field, mDocument->mBson)) {
        while (bson_iter_next(&field)) {
            all.push_back(Document::read(field));
        }
    }
    return all;
}

std::string BSONObj::getString(const std::string &key) const {
    return getField(key).getString();
}

int BSONObj::getInt(const std::string &key) const {
    return getField(key).getInt();
}

double BSONObj::getNumber(const std::string &key) const {
    return getField(key).getNumber();
}

BSONObj BSONObj::getObject(const std::string &key) const {
    return getField(key).getObject();
}

BSONObj BSONObj::getArray(const std::string &key) const {
    return getField(key).getArray();
}

int BSONObj::nFields() const {
    return static_cast<int>(bson_count_keys(mDocument->mBson));
}

BSONError BSONElement::wrongType() const {
    return BSONError("wrong type for field \"" + mKey + "\"");
}

std::string BSONElement::getString() const {
    if (const auto *text = std::get_if<std::string>(&mValue)) {
        return *text;
    }
    throw wrongType();
}

int BSONElement::getInt() const {
    if (const auto *number = std::get_if<int>(&mValue)) {
        return *number;
    }
    throw wrongType();
}

double BSONElement::getNumber() const {
    if (const auto *number = std::get_if<int>(&mValue)) {
        return *number;
    }
    if (const auto *number = std::get_if<long long>(&mValue)) {
        return static_cast<double>(*number);
    }
    if (const auto *number = std::get_if<double>(&mValue)) {
        return *number;
    }
    throw wrongType();
}

BSONObj BSONElement::getObject() const {
    if (const auto *document = std::get_if<BSONObj>(&mValue)) {
        return *document;
    }
    return getArray();
}

BSONObj BSONElement::getArray() const {
    if (const auto *array = std::get_if<Array>(&mValue)) {
        return array->mElements;
    }
    throw wrongType();
}

BSONObjBuilder::BSONObjBuilder() : mDocument(std::make_unique<BSONObj::Document>()) {}

BSONObjBuilder::~BSONObjBuilder() = default;

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, const std::string &value) {
    const std::string name = validKey(key);
    const std::string text = validText(value);
    bson_append_utf8(mDocument->mBson, name.data(), length(name), text.data(), length(text));
    return *this;
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, const char *value) {
    return append(key, std::string(value ? value : ""));
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, int value) {
    const std::string name = validKey(key);
    bson_append_int32(mDocument->mBson, name.data(), length(name), value);
    return *this;
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, long long value) {
    const std::string name = validKey(key);
    bson_append_int64(mDocument->mBson, name.data(), length(name), value);
    return *this;
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, double value) {
    const std::string name = validKey(key);
    bson_append_double(mDocument->mBson, name.data(), length(name), value);
    return *this;
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, bool value) {
    const std::string name = validKey(key);
    bson_append_bool(mDocument->mBson, name.data(), length(name), value);
    return *this;
}

BSONObjBuilder &BSONObjBuilder::append(const std::string &key, const BSONObj &value) {
    const std::string name = validKey(key);
    bson_append_document(mDocument->mBson, name.data(), length(name), value.mDocument->mBson);
    return *this;
}

BSONObjBuilder &BSONObjBuilder::appendArray(const std::string &key, const BSONObj &value) {
    const std::string name = validKey(key);
    bson_append_array(mDocument->mBson, name.data(), length(name), value.mDocument->mBson);
    return *this;
}

BSONObj BSONObjBuilder::obj() const {
    return BSONObj(std::make_shared<const BSONObj::Document>(bson_copy(mDocument->mBson)));
}

} // namespace bson
