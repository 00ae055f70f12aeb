#pragma once

#include <memory>
#include <string>

namespace iso8211 {

/// A text that any number of fields and subfields hold at once: copies share it.
class sc_Name {
public:
    sc_Name() = default;
    /// Holds a copy of the text.
    explicit sc_Name(const std::string &text)
        : m_text(text.empty() ? nullptr : std::make_shared<const std::string>(text))
    {
    }
    /// Shares a text that stands in what the owner holds, and keeps that alive.
    template <class Owner>
    sc_Name(const std::shared_ptr<Owner> &owner, const std::string &text)
        : m_text(owner, &text)
    {
    }

    [[nodiscard]] const std::string &text() const
    {
        static const std::string none;
        return m_text != nullptr ? *m_text : none;
    }

    bool operator==(const sc_Name &other) const
    {
        return m_text == other.m_text || text() == other.text();
    }

private:
    std::shared_ptr<const std::string> m_text; // null for an empty one
};

} // namespace iso8211

// The established names of the library.
using iso8211::sc_Name;
