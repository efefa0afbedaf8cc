// The mouth preview and the choice of mouth set.
#include <string>

#include "app/Form1.h"
#include "sheet/sheet_cells.h"
#include "timeline/MouthSets.h"
#include "timeline/mouth_names.h"

/// A row without a shape shows nothing new: that is how a mouth is held.
void Form1::PaintMouth() {
  const auto mouth = timeline::MouthNumber(Grid1.TextMatrix(Grid1.Row(), sheet::kShapeColumn));
  if (!mouth) return;
  Picture1.SetAccessibleName("Mouth: " + std::string(timeline::MouthInWords(*mouth)));
  if (MYCartoon.Checked()) {
    Picture1.SetPicture(form4->MouthPicture(*mouth));
  } else if (MySketch.Checked()) {
    Picture1.SetPicture(form5->MouthPicture(*mouth));
  }
}

void Form1::MySketch_Click() { ChooseMouthSet(MySketch, MYCartoon); }
void Form1::MYCartoon_Click() { ChooseMouthSet(MYCartoon, MySketch); }

void Form1::ChooseMouthSet(platform::MenuItem& chosen, platform::MenuItem& other) {
  chosen.SetChecked(true);
  other.SetChecked(false);
  Picture1.SetPicture(nullptr);
  Picture1.SetAccessibleName("Mouth: none");
  PaintMouth();
  Picture1.Refresh();
  PaintWav();
  PaintVelocity();
  Picture2.Refresh();
}
