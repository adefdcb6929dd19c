#pragma once

#include "core/Prompter.h"

namespace vantrel {

class Host;

// The system's messages in message boxes: information, stop and Yes/No questions, titled with the main
// window's title ("Vantrel" until there is one).
class GuiPrompter : public Prompter {
public:
    explicit GuiPrompter(const Host& host) : m_host(host) {}

    void info(const QString& text) override;
    void stop(const QString& text) override;
    bool ask(const QString& text) override;
    void beep() override;

private:
    QString title() const;
    const Host& m_host;
};

} // namespace vantrel
