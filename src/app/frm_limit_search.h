#pragma once

// The dialog of the 18 search limits (image/search_limits.h).

#include <deque>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "image/image_codec.h"

namespace memwright {

class frmLimitSearch {
  public:
    // Shows what the image holds.
    explicit frmLimitSearch(ImageCodec& image);

    // By limit, 0 to 17. The texts of the boxes are in the radio's character set.
    std::deque<TextBox> Text1;
    std::deque<ComboBox> Combo1;

    // Before the limits 2k and 2k + 1: "L00" to "L07" and "L--".
    Label Label1{"Label1"};
    Label Label2{"Label2"};
    Label Label3{"Label3"};
    Label Label4{"Label4"};
    Label Label5{"Label5"};
    Label Label6{"Label6"};
    Label Label7{"Label7"};
    Label Label8{"Label8"};
    Label Label9{"Label9"};

    CommandButton Command1{"Command1"};
    CommandButton Command2{"Command2"};

    std::vector<Label*> row_labels();

    // Encodes every control into the image, whether it was changed or not.
    void SaveAll();

    Signal<> closed;

  private:
    void Form_Load();
    void Command1_Click();
    void Command2_Click() { closed(); }
    void Text1_LostFocus(std::size_t Index);

    ImageCodec& image_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
