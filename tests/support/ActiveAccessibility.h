#pragma once

namespace tests {

/// While it lives the platform behaves as if assistive technology were there.
class ActiveAccessibility {
public:
    ActiveAccessibility();
    ~ActiveAccessibility();
    ActiveAccessibility(const ActiveAccessibility &) = delete;
    ActiveAccessibility &operator=(const ActiveAccessibility &) = delete;
};

} // namespace tests
