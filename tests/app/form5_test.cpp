// The About box.

#include <gtest/gtest.h>

#include "app/dialogs.h"

namespace memwright {
namespace {

TEST(AboutBox, names_the_product_its_version_and_its_authors) {
    const Form5 form;
    EXPECT_EQ(form.NameLabel.caption.get(), "Memwright");
    EXPECT_EQ(form.VersionLabel.caption.get(), "Version 1.0");
    EXPECT_NE(form.CreditLabel.caption.get(), "");
}

TEST(AboutBox, is_closed_by_its_button) {
    Form5 form;
    int closes = 0;
    const Connection connection = form.closed.connect([&] { ++closes; });
    EXPECT_EQ(form.Command1.caption.get(), "&OK");
    form.Command1.clicked();
    EXPECT_EQ(closes, 1);
}

}  // namespace
}  // namespace memwright
