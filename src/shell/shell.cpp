#include "shell/shell.h"

#include "form/main_form.h"

namespace vrk {

Shell::Shell(const Platform& its_platform)
    : platform(its_platform)
    , window_form(std::make_unique<MainForm>())
    , form(*window_form)
    , controls(window_form->controls)
    , port(its_platform.ports)
    // clang-format off
    //                            kind                    ms
    , Timer3     (platform.loop, Timer::Kind::one_shot,     500)
    , Timer11    (platform.loop, Timer::Kind::one_shot,   20000)
    , Timer12    (platform.loop, Timer::Kind::repeating,   1000)
    , TimerUnload(platform.loop, Timer::Kind::one_shot,     500)
    // clang-format on
    , desk(platform.loop)
{
    Timer11.on_tick = [this] { form.LabEdit_Clew.set_visible(false); };
}

Shell::~Shell() = default;

} // namespace vrk
