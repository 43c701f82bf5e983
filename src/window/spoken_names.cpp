#include "window/spoken_names.h"

#include "form/main_form.h"

#include "shell/messages.h"
#include "shell/window_words.h"

#include <QAbstractItemView>

namespace vrk {

namespace {

// Fields and lists that stand beside a label. For so many indices on from the first of both; -1: a single control.
struct Labelled {
    const char* control;
    int first;
    const char* label;
    int label_first;
    int count;
};

// Choices whose words answer a label's.
struct Answers {
    const char* control;
    int count;
    const char* label;
    int label_index;
};

// clang-format off
constexpr Labelled labelled[] = {
//    control                     first  label               first count
    { "txtDevice",                  -1, "Label2",              0, 1 },
    { "combCommPort",               -1, "Label2",              5, 1 },
    { "cobBaudMax",                 -1, "LabMaxBaud",         -1, 1 },
    { "cobBaudMin",                 -1, "Label4",             -1, 1 },
    { "com_RC_frequency",            0, "Label8",              0, 1 },
    { "com_RC_frequency",            4, "Label8",              3, 2 },
    { "comb_485_pin",               -1, "Lab_485_pin",        -1, 1 },
    { "comb_External_WDT",          -1, "Label9",             -1, 1 },
    { "txtWrite_OK_Count",          -1, "labWrite_OK_Count",  -1, 1 },
    { "txtWrite_Bad_Count",         -1, "labWrite_Bad_Count", -1, 1 },
    { "comDalay_ReDownLoad",        -1, "Label10",             1, 1 },
    { "txtFileCheckSum",            -1, "LabFileCheckSum",     0, 1 },
    { "txtDataFileCheckSum",        -1, "LabFileCheckSum",     1, 1 },
    { "texAuto_Increase",            0, "LabAuto_Increase",    0, 4 },
    { "texData_Auto_Increase",       0, "LabData_Auto_Increase", 0, 4 },
    { "texOrder",                   -1, "LabLine",             0, 1 },
    { "texStation",                 -1, "LabLine",             1, 1 },
    { "texLedger",                  -1, "LabLine",             2, 1 },
    { "texDumpAddress",              0, "LabDumpAddress",      0, 2 },
    { "texDumpFind",                 0, "LabDumpFind",         0, 2 },
    { "txt_Start_Address",          -1, "LabStore",            0, 1 },
    { "txt_length",                 -1, "LabStore",            1, 1 },
    { "txtUserCode",                -1, "LabUserCode",         0, 1 },
    { "cobUserCodeBaud",            -1, "LabUserCode",         1, 1 },
    { "cobUserCodeParity",          -1, "LabUserCode",         2, 1 },
    { "cobUserCodeDataBits",        -1, "LabUserCode",         3, 1 },
    { "cobUserCodeStopBits",        -1, "LabUserCode",         4, 1 },
    { "cob_DEMO_DownLoad_Baud",     -1, "LabDEMO",             0, 1 },
    { "cob_DEMO_DownLoad_Parity",   -1, "LabDEMO",             1, 1 },
    { "cob_DEMO_DownLoad_DataBits", -1, "LabDEMO",             2, 1 },
    { "cob_DEMO_DownLoad_StopBits", -1, "LabDEMO",             3, 1 },
    { "cob_DEMO_UserCode_Baud",     -1, "LabDEMO",             4, 1 },
    { "cob_DEMO_UserCode_Parity",   -1, "LabDEMO",             5, 1 },
    { "cob_DEMO_UserCode_DataBits", -1, "LabDEMO",             6, 1 },
    { "cob_DEMO_UserCode_StopBits", -1, "LabDEMO",             7, 1 },
    { "txt_download_max",           -1, "labTJXZ",             0, 1 },
    { "combPins",                   -1, "labTJXZ",             3, 1 },
    { "com_Debug_COM",              -1, "LabDebug",            0, 1 },
    { "com_Debug_Baud",             -1, "LabDebug",            1, 1 },
    { "com_Debug_DataBits",         -1, "LabDebug",            2, 1 },
    { "com_Debug_ParityCheck",      -1, "LabDebug",            3, 1 },
    { "com_Debug_StopBits",         -1, "LabDebug",            4, 1 },
    { "combDebugCodePage",          -1, "LabDebug",            5, 1 },
    { "texSendCycle",               -1, "LabDebug",            6, 1 },
    { "texSpreadSendCycle",         -1, "LabDebug",            7, 1 },
    { "lst_debug1",                 -1, "Label23",             0, 1 },
    { "lst_debug2",                 -1, "Label23",             1, 1 },
    { "lst_debug3",                 -1, "Label23",             2, 1 },
    { "lst_debug4",                 -1, "Label23",             3, 1 },
};

constexpr Answers answers[] = {
    { "Option0", 2, "LabOption", 0 },    { "Option1", 2, "LabOption", 1 },   { "Option2", 3, "LabOption", 2 },
    { "Option3", 3, "LabOption", 3 },    { "Option4", 2, "LabOption", 4 },   { "Option5", 3, "LabOption", 5 },
    { "Option6", 2, "LabOption", 6 },    { "Option7", 2, "LabOption", 7 },   { "Option8", 2, "LabOption", 8 },
    { "Option9", 2, "LabOption", 9 },    { "Option10", 2, "LabOption", 10 }, { "Option11", 2, "LabOption", 11 },
    { "Option12", 3, "LabOption", 12 },  { "Option13", 2, "LabOption", 13 },
    { "opt_485_pin", 2, "Lab_485_pin", -1 },
    { "opt_485_logic", 2, "Lab__485_logic", -1 },
    { "opt_External_WDT", 2, "Label9", -1 },
    { "opt_ISP_DEMO_WDT", 2, "Label9", -1 },
    { "optAuto_Increase", 3, "LabAuto_Increase", 4 },
    { "optData_Auto_Increase", 3, "LabData_Auto_Increase", 4 },
    { "optBeepYes", 1, "Label10", 0 },
    { "optBeepNo", 1, "Label10", 0 },
};
// clang-format on

class Names {
public:
    Names(Binder& binder, QWidget& window)
        : binder_(binder)
        , window_(window)
    {
    }

    QString in_language(const Text& text) const { return to_qt(vrk::in_language(binder_.shell(), text)); }
    QWidget* widget(const QString& name) const { return window_.findChild<QWidget*>(name); }
    QWidget* widget(const char* name, int index) const
    {
        return widget(index < 0 ? QString(name) : QString("%1(%2)").arg(name).arg(index));
    }

    // The label is the field's: a reader that asks for the relation finds it, and so do lists, whose name is what is
    // chosen in them.
    void label(const Labelled& row, int step) const
    {
        auto* label = qobject_cast<QLabel*>(widget(row.label, row.label_first < 0 ? -1 : row.label_first + step));
        QWidget* field = widget(row.control, row.first < 0 ? -1 : row.first + step);
        if (label == nullptr || field == nullptr)
            return;
        label->setBuddy(field);
        if (qobject_cast<QAbstractItemView*>(field) != nullptr) // lines to look at do not ask for their label
            field->setAccessibleName(label->text());
    }

    // The question changes with the model.
    void answer(const Answers& row) const
    {
        const auto* label = static_cast<const Label*>(binder_.shell().controls.find(row.label, row.label_index));
        for (int i = 0; i < row.count; ++i) {
            if (QWidget* choice = widget(row.control, row.count == 1 ? -1 : i); choice != nullptr)
                binder_.follow(*label, [label, choice] { choice->setAccessibleDescription(to_qt(label->caption())); });
        }
    }

    // A list's own name is not asked for, its description is.
    void name(const QString& control, const QString& words) const
    {
        QWidget* named = widget(control);
        if (named == nullptr)
            return;
        named->setAccessibleName(words);
        if (qobject_cast<QComboBox*>(named) != nullptr)
            named->setAccessibleDescription(words);
    }

    void name_strings() const
    {
        const auto count = static_cast<int>(std::size(binder_.shell().form.texSpreadSend));
        for (int row = 0; row < count; ++row) {
            const QString number = QString::number(row + 1);
            const QString at = "(" + QString::number(row) + ")";
            name("texSpreadSend" + at, in_language(numbered_string) + number);
            name("cheSpreadHex" + at, in_language(numbered_string) + number + in_language(is_hexadecimal));
            name("comSpreadSendCom" + at, in_language(send_string) + number);
        }
    }

private:
    Binder& binder_;
    QWidget& window_;
};

} // namespace

void give_spoken_names(Binder& binder, QWidget& window)
{
    const Names names(binder, window);
    for (const Labelled& row : labelled) {
        for (int step = 0; step < row.count; ++step)
            names.label(row, step);
    }
    for (const Answers& row : answers)
        names.answer(row);
    for (const SpokenWords& row : spoken_words())
        names.name(to_qt(row.control), names.in_language(row.words));
    names.name_strings();
}

} // namespace vrk
