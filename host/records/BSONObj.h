#pragma once

#include <memory>
#include <stdexcept>
#include <string>

namespace bson {

/// What reading a document throws.
class BSONError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An immutable document with shared content.
class BSONObj {
public:
    /// The empty document.
    BSONObj();
    /// Reads JSON text, UTF-8. Throws BSONError on text that is no document.
    static BSONObj fromJson(const std::string &text);

    /// The document as JSON text, UTF-8, which fromJson reads back. Documents and arrays may be nested 90 deep.
    std::string jsonString() const;
    bool isEmpty() const;
    bool hasField(const std::string &key) const;
    /// Value of a text field; throws BSONError when it is absent or no text. The last of equal keys counts.
    std::string getString(const std::string &key) const;
    /// Value of a number field; throws BSONError when it is absent or no number.
    double getNumber(const std::string &key) const;
    /// Value of a document or array field; throws BSONError when it is absent or neither.
    BSONObj getObject(const std::string &key) const;
    /// Number of fields, equal keys counted each.
    int nFields() const;

private:
    friend class BSONObjBuilder;
    struct Document;
    explicit BSONObj(std::shared_ptr<const Document> document);
    std::shared_ptr<const Document> mDocument;
};

/// Builds a document field by field.
class BSONObjBuilder {
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
