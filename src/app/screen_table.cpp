#include "app/screen_table.h"

#include "frame/frmDebugWindow.h"
#include "frame/trace.h"
#include "records/frmDataBase.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/frmSTM.h"
#include "tray/frmExit.h"

namespace kelvrane {

namespace {

template <typename Form>
QWidget* make() {
    return new Form;
}

constexpr ScreenRow rows[] = {
    {Screen::frmDataBase, make<frmDataBase>},
    {Screen::frmDebugWindow, make<frmDebugWindow>, [] { Trace().clear(); }},
    {Screen::frmExit, make<frmExit>},
    {Screen::frmSTM, make<frmSTM>, UnloadControlScreen},
};

} // namespace

std::span<const ScreenRow> ScreenTable() {
    return rows;
}

} // namespace kelvrane
