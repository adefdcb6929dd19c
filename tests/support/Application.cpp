#include "tests/support/Application.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace vantrel::testing {

namespace {

QApplication* application = nullptr;

class ApplicationEnvironment : public ::testing::Environment {
public:
    void TearDown() override {
        delete application;
        application = nullptr;
    }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

} // namespace

void ensureApplication() {
    static int argc = 1;
    static char name[] = "vantrel_tests";
    static char* argv[] = {name, nullptr};
    if (!application)
        application = new QApplication(argc, argv);
}

} // namespace vantrel::testing
