#pragma once

#include "host/Export.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bson {

/// What reading a document throws.
class TIMESHARE_EXPORT BSONError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class BSONElement;

/// An immutable document with shared content. Of equal keys each stays, in order, and the first counts.
class TIMESHARE_EXPORT BSONObj {
public:
    /// The empty document.
    BSONObj();
    /// Reads JSON text, UTF-8. Throws BSONError on text that is no document.
    static BSONObj fromJson(const std::string &text);

    /// The document as JSON text, UTF-8, which fromJson reads back. Documents and arrays may be nested 90 deep.
    std::string jsonString() const;
    bool isEmpty() const;
    bool hasField(const std::string &key) const;
    /// The field of a key; throws BSONError when it is absent, as all that follow do, or when it is of another type.
    BSONElement getField(const std::string &key) const;
    std::string getString(const std::string &key) const;
    /// A 32-bit integer, and no other number.
    int getInt(const std::string &key) const;
    /// Any number, as a double.
    double getNumber(const std::string &key) const;
    /// A document or an array, whose elements are its fields.
    BSONObj getObject(const std::string &key) const;
    BSONObj getArray(const std::string &key) const;
    /// All fields, in order.
    std::vector<BSONElement> elements() const;
    /// Number of fields, equal keys counted each.
    int nFields() const;

private:
    friend class BSONObjBuilder;
    struct Document;
    explicit BSONObj(std::shared_ptr<const Document> document);
    std::shared_ptr<const Document> mDocument;
};

/// One field of a document, or element of an array: its key, and a value of some type. The accessors throw BSONError when
/// it is of another.
class TIMESHARE_EXPORT BSONElement {
public:
    /// The key; of an element of an array its position.
    const std::string &key() const { return mKey; }
    bool isText() const { return std::holds_alternative<std::string>(mValue); }
    bool isArray() const { return std::holds_alternative<Array>(mValue); }

    std::string getString() const;
    int getInt() const;
    double getNumber() const;
    BSONObj getObject() const;
    BSONObj getArray() const;

private:
    friend class BSONObj;
    struct Array {
        BSONObj mElements;
    };
    /// Empty for a type that none of the accessors reads.
    using Value = std::variant<std::monostate, std::string, int, long long, double, BSONObj, Array>;
    BSONError wrongType() const;
    BSONElement(std::string key, Value value) : mKey(std::move(key)), mValue(std::move(value)) {}

    std::string mKey;
    Value mValue;
};

/// Builds a document field by field; a key may be given again.
class TIMESHARE_EXPORT BSONObjBuilder {
public:
    BSONObjBuilder();
    ~BSONObjBuilder();
    BSONObjBuilder(const BSONObjBuilder &) = delete;
    BSONObjBuilder &operator=(const BSONObjBuilder &) = delete;

    BSONObjBuilder &append(const std::string &key, const std::string &value);
    BSONObjBuilder &append(const std::string &key, const char *value);
    BSONObjBuilder &append(const std::string &key, int value);
    BSONObjBuilder &append(const std::string &key, long long value);
    BSONObjBuilder &append(const std::string &key, double value);
    BSONObjBuilder &append(const std::string &key, bool value);
    BSONObjBuilder &append(const std::string &key, const BSONObj &value);
    BSONObjBuilder &appendArray(const std::string &key, const BSONObj &value);
    /// The document built so far.
    BSONObj obj() const;

private:
    std::unique_ptr<BSONObj::Document> mDocument;
};

} // namespace bson
