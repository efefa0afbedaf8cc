#include "audio/Form2.h"

#include <cstdint>
#include <string>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "platform/numbers.h"

using platform::PixelsFromTwips;

platform::WindowInstance<Form2> form2;

namespace {

constexpr auto kRight = platform::Label::Align::Right;
constexpr int kRowTwips = 450;

}  // namespace

Form2::Form2()
    : Window({.name = "Form2",
              .caption = "Sample info",
              .border = Border::FixedToolWindow,
              .client_width = PixelsFromTwips(3060),
              .client_height = PixelsFromTwips(3585),
              .icons = {}}),
      Label1(*this, "Label1", "Format", kRight),
      Label2(*this, "Label2", "#Chnls", kRight),
      Label3(*this, "Label3", "SmpleRt", kRight),
      Label4(*this, "Label4", "ByteRt", kRight),
      Label5(*this, "Label5", "BlkAlng", kRight),
      Label6(*this, "Label6", "Bts/Smpl", kRight) {
  const struct {
    platform::Label& label;
    platform::TextBox& text;
  } rows[] = {{Label1, Text1}, {Label2, Text2}, {Label3, Text3},
              {Label4, Text4}, {Label5, Text5}, {Label6, Text6}};
  int row = 0;
  for (const auto& [label, text] : rows) {
    label.MoveTwips(840, 510 + kRowTwips * row, 675, 195);
    text.MoveTwips(1680, 450 + kRowTwips * row, 555, 315);
    text.SetAccessibleName(label.Caption());
    text.SetReadOnly(true);
    ++row;
  }
}

void Form2::Form_Load() {
  form1->PrefsCallback(*this);
  const audio::WaveFormatBlock& format = audio::LoadedSound().WaveFormat;
  const struct {
    platform::TextBox& text;
    std::int32_t number;
  } fields[] = {{Text1, format.wFormatTag},      {Text2, format.nChannels},   {Text3, format.nSamplesPerSec},
                {Text4, format.nAvgBytesPerSec}, {Text5, format.nBlockAlign}, {Text6, format.wBitsPerSample}};
  for (const auto& [text, number] : fields) text.SetText(std::to_string(number));
}

void Form2::Form_Paint() { form1->Draw_Pattern(*this); }
