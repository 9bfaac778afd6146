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
    /// The last field of a key; throws when there is none.
    bson_iter_t at(const std::string &key) const;

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

bool findLast(const bson_t *document, const std::string &key, bson_iter_t &found) {
    bson_iter_t field;
    bool present = false;
    if (bson_iter_init(&field, document)) {
        while (bson_iter_next(&field)) {
            if (key == bson_iter_key(&field)) {
                found = field;
                present = true;
            }
        }
    }
    return present;
}

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

bson_iter_t BSONObj::Document::at(const std::string &key) const {
    bson_iter_t found;
    if (!findLast(mBson, key, found)) {
        throw BSONError("no field \"" + key + "\"");
    }
    return found;
}

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
    return findLast(mDocument->mBson, key, field);
}

std::string BSONObj::getString(const std::string &key) const {
    const bson_iter_t field = mDocument->at(key);
    if (!BSON_ITER_HOLDS_UTF8(&field)) {
        throw BSONError("field \"" + key + "\" is no text");
    }
    uint32_t size = 0;
    const char *text = bson_iter_utf8(&field, &size);
    return std::string(text, size);
}

double BSONObj::getNumber(const std::string &key) const {
    const bson_iter_t field = mDocument->at(key);
    if (!BSON_ITER_HOLDS_NUMBER(&field)) {
        throw BSONError("field \"" + key + "\" is no number");
    }
    return bson_iter_as_double(&field);
}

BSONObj BSONObj::getObject(const std::string &key) const {
    const bson_iter_t field = mDocument->at(key);
    const uint8_t *data = nullptr;
    uint32_t size = 0;
    if (BSON_ITER_HOLDS_DOCUMENT(&field)) {
        bson_iter_document(&field, &size, &data);
    } else if (BSON_ITER_HOLDS_ARRAY(&field)) {
        bson_iter_array(&field, &size, &data);
    }
    bson_t *copy = data ? bson_new_from_data(data, size) : nullptr;
    if (!copy) {
        throw BSONError("field \"" + key + "\" is neither document nor array");
    }
    return BSONObj(std::make_shared<const Document>(copy));
}

int BSONObj::nFields() const {
    return static_cast<int>(bson_count_keys(mDocument->mBson));
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
