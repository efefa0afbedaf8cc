// The sheet's grid: built from the project's length and rate, filled in by the user.
#include <cstdint>
#include <new>
#include <string>

#include "app/Form1.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"
#include "platform/numbers.h"
#include "sheet/SheetDocument.h"
#include "sheet/timing.h"
#include "timeline/layout.h"
#include "timeline/mouth_names.h"

void Form1::SetupGrid() {
  const double rate = sheet::FrameRate(), seconds = sheet::CalcTime().value_or(0);
  // Without a sound every rate gives a sheet of one row, so any rate of the host's will do.
  if (seconds != 0 && !AcceptsRate(rate)) return;
  const platform::RefreshPause whole_sheet_moves;
  InitTitleBar();
  sheet::GridReady = platform::kFalse;
  Grid1.SetCol(2);
  Grid1.SetColWidth(2, timeline::CommentColumnTwips(ScaleWidth()));
  Grid1.SetRows(seconds == 0 ? 1 : *sheet::GridRows(rate, seconds).rows);
  FillFrameNumbers();
  sheet::SheetCells.Resize(Grid1.Rows());
  sheet::GridReady = platform::kTrue;
  PaintWav();
  InitVelocity();
  WriteHeader();
}

std::string Form1::RefusalOfRows(double rate, double seconds) {
  const auto count = sheet::GridRows(rate, seconds);
  if (!count.rows) return count.reason;
  try {
    Grid1.ReserveRows(*count.rows);
    sheet::SheetCells.Reserve(*count.rows);
  } catch (const std::bad_alloc&) {
    return "There isn't enough memory for a sheet of " + std::to_string(*count.rows) + " rows.";
  }
  return {};
}

bool Form1::AcceptsRate(double rate) {
  const std::string reason = RefusalOfRows(rate, sheet::CalcTime().value_or(0));
  if (!reason.empty()) platform::MsgBox(reason, platform::Buttons::Ok, platform::Icon::Warning);
  return reason.empty();
}

/// Moves through every row, as a user would: each move raises the grid's events.
void Form1::FillFrameNumbers() {
  platform::LongWork work(&Grid1);
  Grid1.SetCol(0);
  for (int row = 1; row < Grid1.Rows(); ++row) {
    work.Report(row, Grid1.Rows());
    Grid1.SetRow(row);
    Grid1.SetText(std::to_string(row - 1));
  }
}

void Form1::WriteHeader() {
  Grid1.SetRow(0);
  int col = 0;
  for (const char* title : {"Frame", "Shape", "Comment"}) {
    Grid1.SetCol(col++);
    Grid1.SetText(title);
  }
}

std::int32_t Form1::GetCurrentTick() const { return Grid1.Row() - 1; }

void Form1::RecordCell() {
  if (sheet::GridReady == platform::kFalse || Grid1.Row() < 1) return;
  sheet::SheetCells.Record(GetCurrentTick(), Grid1.Col(), Grid1.Text());
}

void Form1::Grid1_LeaveCell() {
  // The editor writes into the current cell: it must not stay open over a cell that is no longer current.
  CloseCommentEditor();
  RecordCell();
}

void Form1::Grid1_KeyUp(int key_code, int /*shift*/) {
  if (key_code == platform::Grid::kDeleteKey && Grid1.Col() == sheet::kShapeColumn) {
    Grid1.SetText("");
    TellShape();
  }
  RecordCell();
}

void Form1::Grid1_SelChange() {
  if (!Visible()) return;
  PaintMouth();
  if (CommonDialog1.FileName.empty()) return;
  PaintWav();
  PaintVelocity();
}

void Form1::List1_Click() {
  if (Grid1.Row() == 0) return;
  PutShape(List1.Text() == "None" ? "" : List1.Text());
  Grid1.SetFocus();
}

void Form1::PutShape(const std::string& shape) {
  if (Grid1.Row() == 0) return;
  Grid1.SetCol(sheet::kShapeColumn);
  Grid1.SetText(shape);
  RecordCell();
  PaintMouth();
  TellShape();
}

void Form1::TellShape() {
  const auto mouth = timeline::MouthNumber(Grid1.Text());
  std::string shape = Grid1.Text();
  if (shape.ends_with(' ')) shape.pop_back();
  Grid1.Announce(mouth ? shape + ": " + std::string(timeline::MouthInWords(*mouth)) : "None");
}

void Form1::Grid1_Click() {
  if (Grid1.Col() == sheet::kCommentColumn) ShowCommentEditor();
}

void Form1::ShowCommentEditor() {
  // A click on the header finds the current row wherever it was scrolled to.
  Grid1.BringIntoView();
  PlaceCommentEditor();
  Text2.SetText(Grid1.Text());
  Text2.SetVisible(true);
  Text2.BringToFront();
  Text2.SetFocus();
}

void Form1::PlaceCommentEditor() {
  Text2.SetWidth(platform::PixelsFromTwips(Grid1.ColWidth(Grid1.Col())));
  Text2.SetLeft(Grid1.Left() + 2 + platform::PixelsFromTwips(Grid1.ColPos(Grid1.Col())));
  Text2.SetTop(Grid1.Top() + 2 + platform::PixelsFromTwips(Grid1.RowPos(Grid1.Row())));
}

void Form1::CloseCommentEditor() {
  if (!Text2.Visible()) return;
  Grid1.SetFocus();
  Text2.SetVisible(false);
}

void Form1::Text2_Change() { Grid1.SetText(Text2.Text()); }

void Form1::Text2_LostFocus() { Text2.SetVisible(false); }
