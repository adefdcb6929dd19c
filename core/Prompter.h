#pragma once

#include <QString>

namespace vantrel {

// The only way a screen talks to the person: the system's own texts, byte for byte.
class Prompter {
public:
    virtual ~Prompter() = default;
    virtual void info(const QString& text) = 0;
    virtual void stop(const QString& text) = 0;
    // A Yes/No question; true for Yes.
    virtual bool ask(const QString& text) = 0;
    virtual void beep() = 0;
};

} // namespace vantrel
