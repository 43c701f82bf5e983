#include "form/main_form.h"

namespace vrk {

namespace {

void register_controls(MainForm& form)
{
    ControlRegistry& all = form.controls;

    all.add(form.FrameX, "FrameX");
    all.add(form.txtDevice, "txtDevice");
    all.add(form.Command3, "Command3");
    all.add(form.TreeViewDevice, "TreeViewDevice");
    all.add(form.Label2, "Label2");
    all.add(form.LabISP_reange, "LabISP_reange");

    all.add(form.comLoadFile, "comLoadFile");
    all.add(form.comLoadDataFile, "comLoadDataFile");
    all.add(form.txtAP_FileStart, "txtAP_FileStart");
    all.add(form.txtDataFileStart, "txtDataFileStart");
    all.add(form.cheClearAP_Buffer, "cheClearAP_Buffer");
    all.add(form.cheClearDataBuffer, "cheClearDataBuffer");

    all.add(form.combCommPort, "combCommPort");
    all.add(form.comOtherPort, "comOtherPort");
    all.add(form.LabMaxBaud, "LabMaxBaud");
    all.add(form.Label4, "Label4");
    all.add(form.cobBaudMax, "cobBaudMax");
    all.add(form.cobBaudMin, "cobBaudMin");
    all.add(form.cheTL, "cheTL");
    all.add(form.imgOpen_sys, "imgOpen_sys");
    all.add(form.imgNotOpen_sys, "imgNotOpen_sys");

    all.add(form.Picture2, "Picture2");
    all.add(form.LabOption, "LabOption");
    all.add(form.Option0, "Option0");
    all.add(form.Option1, "Option1");
    all.add(form.Option2, "Option2");
    all.add(form.Option3, "Option3");
    all.add(form.Option4, "Option4");
    all.add(form.Option5, "Option5");
    all.add(form.Option6, "Option6");
    all.add(form.Option7, "Option7");
    all.add(form.Option8, "Option8");
    all.add(form.Option9, "Option9");
    all.add(form.Option10, "Option10");
    all.add(form.Option11, "Option11");
    all.add(form.Option12, "Option12");
    all.add(form.Option13, "Option13");
    all.add(form.LabOptionC, "LabOptionC");
    all.add(form.comWDT_Prescalar, "comWDT_Prescalar");
    all.add(form.Frame12, "Frame12");
    all.add(form.Frame15, "Frame15");
    all.add(form.Frame20, "Frame20");
    all.add(form.Frame23, "Frame23");
    all.add(form.Label20, "Label20");
    all.add(form.com_RC_frequency, "com_RC_frequency");
    all.add(form.txt_RC_frequency, "txt_RC_frequency");
    all.add(form.Label8, "Label8");
    all.add(form.Picture4, "Picture4");
    all.add(form.Picture7, "Picture7");
    all.add(form.Lab_485_pin, "Lab_485_pin");
    all.add(form.Lab__485_logic, "Lab__485_logic");
    all.add(form.comb_485_pin, "comb_485_pin");
    all.add(form.opt_485_pin, "opt_485_pin");
    all.add(form.opt_485_logic, "opt_485_logic");
    all.add(form.Label9, "Label9");
    all.add(form.comb_External_WDT, "comb_External_WDT");
    all.add(form.opt_External_WDT, "opt_External_WDT");
    all.add(form.opt_ISP_DEMO_WDT, "opt_ISP_DEMO_WDT");
    all.add(form.comb_WDT, "comb_WDT");
    all.add(form.Frame4, "Frame4");
    all.add(form.comReadChipLock, "comReadChipLock");
    all.add(form.LabLock, "LabLock");

    all.add(form.comDownload, "comDownload");
    all.add(form.comStop_Download, "comStop_Download");
    all.add(form.textMsg, "textMsg");
    all.add(form.ProgressBar1, "ProgressBar1");
    all.add(form.labKbyte, "labKbyte");
    all.add(form.labTimeLeft, "labTimeLeft");
    all.add(form.labVerdict, "labVerdict");
    all.add(form.labLastVerdict, "labLastVerdict");
    all.add(form.labWrite_OK_Count, "labWrite_OK_Count");
    all.add(form.txtWrite_OK_Count, "txtWrite_OK_Count");
    all.add(form.labWrite_Bad_Count, "labWrite_Bad_Count");
    all.add(form.txtWrite_Bad_Count, "txtWrite_Bad_Count");
    all.add(form.comClear_OK_Count, "comClear_OK_Count");
    all.add(form.comMastWindow, "comMastWindow");

    all.add(form.Frame16, "Frame16");
    all.add(form.optBeepYes, "optBeepYes");
    all.add(form.optBeepNo, "optBeepNo");
    all.add(form.comDalay_ReDownLoad, "comDalay_ReDownLoad");
    all.add(form.cekReloadFile, "cekReloadFile");
    all.add(form.cekReloadFileWhileFileChange, "cekReloadFileWhileFileChange");
    all.add(form.Label10, "Label10");

    all.add(form.TabStrip1, "TabStrip1");
    all.add(form.TabStrip2, "TabStrip2");
    all.add(form.Frame7, "Frame7");
    all.add(form.frmDataFlash, "frmDataFlash");
    all.add(form.txtBuffer, "txtBuffer");
    all.add(form.txtBuffer2, "txtBuffer2");
    all.add(form.txtDataFlash1, "txtDataFlash1");
    all.add(form.tetDataFlash2, "tetDataFlash2");
    all.add(form.vscFile, "vscFile");
    all.add(form.txtBufferAddress, "txtBufferAddress");
    all.add(form.LabFileCheckSum, "LabFileCheckSum");
    all.add(form.txtFileCheckSum, "txtFileCheckSum");
    all.add(form.txtDataFileCheckSum, "txtDataFileCheckSum");
    all.add(form.labEditedCheckSum, "labEditedCheckSum");
    all.add(form.Label7, "Label7");
    all.add(form.LabDumpAddress, "LabDumpAddress");
    all.add(form.texDumpAddress, "texDumpAddress");
    all.add(form.LabDumpFind, "LabDumpFind");
    all.add(form.texDumpFind, "texDumpFind");
    all.add(form.labDumpFound, "labDumpFound");
    all.add(form.LabEdit_Clew, "LabEdit_Clew");

    all.add(form.fraAuto_Increase, "fraAuto_Increase");
    all.add(form.fraLine, "fraLine");
    all.add(form.cheLedger, "cheLedger");
    all.add(form.cheRecord, "cheRecord");
    all.add(form.LabLine, "LabLine");
    all.add(form.texOrder, "texOrder");
    all.add(form.texStation, "texStation");
    all.add(form.texLedger, "texLedger");
    all.add(form.mnuLog, "mnuLog");
    all.add(form.LabIncrease_Clew, "LabIncrease_Clew");
    all.add(form.frmAP_FileIncrease, "frmAP_FileIncrease");
    all.add(form.cheAuto_Increase, "cheAuto_Increase");
    all.add(form.LabAuto_Increase, "LabAuto_Increase");
    all.add(form.texAuto_Increase, "texAuto_Increase");
    all.add(form.optAuto_Increase, "optAuto_Increase");
    all.add(form.frmDtat_FileIncrease, "frmDtat_FileIncrease");
    all.add(form.cheData_Auto_Increase, "cheData_Auto_Increase");
    all.add(form.LabData_Auto_Increase, "LabData_Auto_Increase");
    all.add(form.texData_Auto_Increase, "texData_Auto_Increase");
    all.add(form.optData_Auto_Increase, "optData_Auto_Increase");

    all.add(form.Frame9, "Frame9");
    all.add(form.LabStore, "LabStore");
    all.add(form.txt_Start_Address, "txt_Start_Address");
    all.add(form.txt_length, "txt_length");
    all.add(form.comStoreFile, "comStoreFile");

    all.add(form.fra_Batch_quantity, "fra_Batch_quantity");
    all.add(form.texBatchFileName, "texBatchFileName");
    all.add(form.comOpenBatchFile, "comOpenBatchFile");
    all.add_name(form.comOpenBatchFile, "comOpenBatchFile(0)");
    all.add(form.comSaveBatchFile, "comSaveBatchFile");
    all.add(form.comLockOptions, "comLockOptions");
    all.add(form.comUnlockOptions, "comUnlockOptions");
    all.add(form.Command1, "Command1");

    all.add(form.Frame18, "Frame18");
    all.add(form.comTJXZ, "comTJXZ");
    all.add(form.com_TJXZ_help, "com_TJXZ_help");
    all.add(form.Read24C512, "Read24C512");
    all.add(form.labTJXZ, "labTJXZ");
    all.add(form.txt_download_max, "txt_download_max");
    all.add(form.combPins, "combPins");
    all.add(form.che_staple, "che_staple");
    all.add(form.mnuProduction, "mnuProduction");

    all.add(form.Frame8, "Frame8");
    all.add(form.LabUserCode, "LabUserCode");
    all.add(form.txtUserCode, "txtUserCode");
    all.add(form.comSendUserCode, "comSendUserCode");
    all.add(form.comHelp, "comHelp");
    all.add(form.cekReloadFileWhileFileChange1, "cekReloadFileWhileFileChange1");
    all.add(form.cobUserCodeBaud, "cobUserCodeBaud");
    all.add(form.cobUserCodeParity, "cobUserCodeParity");
    all.add(form.cobUserCodeDataBits, "cobUserCodeDataBits");
    all.add(form.cobUserCodeStopBits, "cobUserCodeStopBits");

    all.add(form.Frame11, "Frame11");
    all.add(form.LabDEMO, "LabDEMO");
    all.add(form.com_Demo_DownLoad, "com_Demo_DownLoad");
    all.add(form.com_Demo_Re_DownLoad, "com_Demo_Re_DownLoad");
    all.add(form.com_Demo_Stop, "com_Demo_Stop");
    all.add(form.che_Demo_DownLoad, "che_Demo_DownLoad");
    all.add(form.cob_DEMO_DownLoad_Baud, "cob_DEMO_DownLoad_Baud");
    all.add(form.cob_DEMO_DownLoad_Parity, "cob_DEMO_DownLoad_Parity");
    all.add(form.cob_DEMO_DownLoad_DataBits, "cob_DEMO_DownLoad_DataBits");
    all.add(form.cob_DEMO_DownLoad_StopBits, "cob_DEMO_DownLoad_StopBits");
    all.add(form.txt_DEMO_UserCode, "txt_DEMO_UserCode");
    all.add(form.cob_DEMO_UserCode_Baud, "cob_DEMO_UserCode_Baud");
    all.add(form.cob_DEMO_UserCode_Parity, "cob_DEMO_UserCode_Parity");
    all.add(form.cob_DEMO_UserCode_DataBits, "cob_DEMO_UserCode_DataBits");
    all.add(form.cob_DEMO_UserCode_StopBits, "cob_DEMO_UserCode_StopBits");

    all.add(form.fraDebug, "fraDebug");
    all.add(form.Frame24, "Frame24");
    all.add(form.ImgSplitter, "ImgSplitter");
    all.add(form.imgOpen, "imgOpen");
    all.add(form.imgNotOpen, "imgNotOpen");
    all.add(form.labDebugPort, "labDebugPort");
    all.add(form.com_Debug_COM, "com_Debug_COM");
    all.add(form.com_Debug_Baud, "com_Debug_Baud");
    all.add(form.com_Debug_DataBits, "com_Debug_DataBits");
    all.add(form.com_Debug_ParityCheck, "com_Debug_ParityCheck");
    all.add(form.com_Debug_StopBits, "com_Debug_StopBits");
    all.add(form.che_AutoOpenPort, "che_AutoOpenPort");
    all.add(form.comOpenCOM, "comOpenCOM");
    all.add_name(form.comOpenCOM[0], "comOpenCOM");
    all.add(form.texReceive, "texReceive");
    all.add(form.optReceiveHex, "optReceiveHex");
    all.add(form.combDebugCodePage, "combDebugCodePage");
    all.add(form.comDebugClear, "comDebugClear");
    all.add(form.comDebugHelp, "comDebugHelp");
    all.add(form.labReceiveCount, "labReceiveCount");
    all.add(form.labSendCount, "labSendCount");
    all.add(form.comComp, "comComp");
    all.add(form.texSend, "texSend");
    all.add(form.comDebugSend, "comDebugSend");
    all.add(form.comAutoSend, "comAutoSend");
    all.add(form.LabDebug, "LabDebug");
    all.add(form.che_DebugTime, "che_DebugTime");
    all.add(form.comDebugLog, "comDebugLog");
    all.add(form.optDebugLog, "optDebugLog");
    all.add(form.texDebugFind, "texDebugFind");
    all.add(form.comDebugFind, "comDebugFind");
    all.add(form.labDebugFound, "labDebugFound");
    all.add(form.che_DebugDTR, "che_DebugDTR");
    all.add(form.che_DebugRTS, "che_DebugRTS");
    all.add(form.labDebugLines, "labDebugLines");
    all.add(form.optHexSend, "optHexSend");
    all.add(form.texSendCycle, "texSendCycle");

    all.add(form.texSpreadSend, "texSpreadSend");
    all.add(form.cheSpreadHex, "cheSpreadHex");
    all.add(form.texSpreadSendCycle, "texSpreadSendCycle");
    all.add(form.comSpreadSendCom, "comSpreadSendCom");
    all.add(form.comSpreadAutoSend, "comSpreadAutoSend");

    all.add(form.Frame21, "Frame21");
    all.add(form.Frame22, "Frame22");
    all.add(form.lst_debug1, "lst_debug1");
    all.add(form.lst_debug2, "lst_debug2");
    all.add(form.lst_debug3, "lst_debug3");
    all.add(form.lst_debug4, "lst_debug4");
    all.add(form.Label23, "Label23");
    all.add(form.Label24, "Label24");
    all.add(form.Label26, "Label26");
    all.add(form.Label27, "Label27");
    all.add(form.comDebugContinue, "comDebugContinue");
    all.add(form.che_disable_Debug_SFR_232, "che_disable_Debug_SFR_232");

    all.add(form.fraAboutHardWare, "fraAboutHardWare");
    all.add(form.LabAboutHardWare, "LabAboutHardWare");
    all.add(form.mnuTitle, "mnuTitle");
    all.add(form.mnuRecentTitle, "mnuRecentTitle");
    all.add(form.mnuRecentFile, "mnuRecentFile");
    all.add(form.mnuRecentProject, "mnuRecentProject");
    all.add(form.mnuLanguage, "mnuLanguage");
    all.add(form.mnuAbout, "mnuAbout");
    all.add(form.mnuCopyCommandLine, "mnuCopyCommandLine");

    all.add(form.Text1, "Text1");
    all.add(form.optFillbyte, "optFillbyte");
}

void group(std::initializer_list<OptionButton*> buttons)
{
    for (OptionButton* button : buttons)
        button->group = buttons;
}
template <std::size_t Count> void group(OptionButton (&buttons)[Count])
{
    for (OptionButton& button : buttons) {
        for (OptionButton& member : buttons)
            button.group.push_back(&member);
    }
}

void group_buttons(MainForm& form)
{
    group({&form.optBeepYes, &form.optBeepNo});
    group(form.Option0);
    group(form.Option1);
    group(form.Option2);
    group(form.Option3);
    group(form.Option4);
    group(form.Option5);
    group(form.Option6);
    group(form.Option7);
    group(form.Option8);
    group(form.Option9);
    group(form.Option10);
    group(form.Option11);
    group(form.Option12);
    group(form.Option13);
    group(form.opt_485_pin);
    group(form.opt_485_logic);
    group(form.opt_External_WDT);
    group(form.opt_ISP_DEMO_WDT);
    group(form.optAuto_Increase);
    group(form.optData_Auto_Increase);
    group(form.optHexSend);
    group(form.optFillbyte);
    group(form.optReceiveHex);
    group(form.optDebugLog);
    group(form.mnuLanguage);
}

} // namespace

MainForm::MainForm()
{
    register_controls(*this);
    group_buttons(*this);
    com_RC_frequency[0].editable = true;
    com_RC_frequency[5].editable = true;
    LabEdit_Clew.set_visible(false);
    Text1.set_visible(false);
}

} // namespace vrk
