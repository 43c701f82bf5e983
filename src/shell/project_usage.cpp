// What projects are for, as Command1 tells it.
#include "shell/project.h"

#include "shell/messages.h"

namespace vrk {

void Command1_Click(Shell& shell)
{
    // clang-format off
    constexpr Text title = { "VRK 工程文件使用说明", "How to use VRK project files" };
    constexpr Text usage = {
        "    当需要下载时，您或您的同事可能会记不清 MCU 的型号、应用程序代码文件或其它事项，使用工程\n"
        "文件可以消除这方面的烦恼。\n"
        " 1、按照 X 产品下载应用程序的要求，设置 MCU 型号、打开应用程序文件、设置各选项和自动增量。\n"
        " 2、点击“保存工程文件”按钮，给工程文件起一个与 X 产品有关的名字并保存。\n"
        " 3、以后下载 X 产品时，只需点击“打开工程文件”按钮，选择这个工程文件。\n"
        " 4、MCU 型号、各选项和两个缓冲区的内容都保存在工程文件中，不再需要原来的应用程序文件。\n"
        " 5、打开工程文件后，参数和选项被锁定，可以避免误操作。\n"
        " 6、如需修改，点击“解除参数和选项锁定”按钮，修改后重新保存工程文件。\n"
        " 7、批量下载时点击“Re-Download/重复下载”按钮可以提高工作效率。\n"
        "    当天下载工作结束时，要将自动增量“下一个值”记录下来，以便在下一次打开工程文件时修改。",
        "    When programing, you or your colleage may not remember the MCU type, the file name or other\n"
        "things of a product. A project file remembers them for you.\n"
        " 1. Make everything ready for product X: select the MCU type, open the code file, set the options and the\n"
        "    automatic increment.\n"
        " 2. Click \"Save Project\" and give the project file a name that tells of product X.\n"
        " 3. When product X is to be programmed again, click \"Open Project\" and choose this file.\n"
        " 4. MCU type, options and the content of both buffers are in the project file: the code file itself is not\n"
        "    needed any more.\n"
        " 5. An opened project locks all parameters and options, so that nobody changes them by mistake.\n"
        " 6. To change something click \"Unlock Parameters and Options\"; save the project again afterwards.\n"
        " 7. For a batch, \"Re-Download\" makes work faster.\n"
        "    At the end of a day's work write down the \"Next Value\" of the automatic increment: it is to be entered\n"
        "when the project file is opened the next time.",
    };
    // clang-format on
    show_box(shell, in_language(shell, usage), in_language(shell, title));
}

} // namespace vrk
