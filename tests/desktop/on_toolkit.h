// A fixture for tests that need the toolkit, on its display without a screen.
#pragma once

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <memory>

#include "platform/desktop/desktop_driver.h"

class OnToolkit : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QGuiApplication>(count_, arguments_);
    }
    static void TearDownTestSuite() { application_.reset(); }

  private:
    static inline char name_[] = "parts_tests";
    static inline char* arguments_[] = {name_, nullptr};
    static inline int count_ = 1;
    static inline std::unique_ptr<QGuiApplication> application_;
};
