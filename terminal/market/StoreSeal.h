#pragma once

#include <QString>

namespace terminal {

/// Remembers, in a small file beside a store, how the program has left it: whole, of which size, and when it was last
/// changed. A store that is still like that need not be looked over from end to end, which takes the longer the more is in it.
class StoreSeal {
public:
    explicit StoreSeal(const QString &store);

    /// Takes the seal off, since the store is about to be used: a program that is killed leaves none. Answers whether
    /// nobody has touched the store since it was put on.
    bool takeOff() const;
    /// Seals a whole store whose connections are closed; not while another program has it open, which its log tells.
    void putOn() const;

private:
    QString marks() const;

    QString mStore;
    QString mSeal;
};

} // namespace terminal
