// The one window: the five steps on the left; on the right the buffers, and below them the pages of options and tools.
#pragma once

#include "window/binder.h"
#include "window/device_box.h"
#include "window/option_panel.h"

#include <QMainWindow>

#include <memory>
#include <vector>

namespace vrk {

class DumpView;

class MainWindow final : public QMainWindow {
public:
    explicit MainWindow(Shell& shell);

    // Beside everything else, for programs that have more to show.
    void add_panel(QWidget* panel);
    Binder& binder() { return binder_; }
    // The program has to end, and nobody is there to be asked: what runs is stopped, boxes go unanswered.
    void leave();

private:
    QWidget* make_left();
    QWidget* make_right();
    QWidget* make_model_step();
    QWidget* make_file_step();
    QWidget* make_line_step();
    QWidget* make_option_step();
    QWidget* make_download_step();
    QLineEdit* counter_of(TextBox& control);
    QWidget* make_buffers();
    QWidget* make_tools();
    QWidget* make_buffer_page(int index);
    QWidget* make_option_page();
    QWidget* make_check_page();
    QWidget* make_beeps();
    void take_stored_place();
    void note_place(); // for the settings, while the window is whole
    void store_place();
    void follow_title();
    void show_shrunk();
    void ask_before_closing();
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    Shell& shell_;
    bool narrow_ = false; // shrunk to the download group, or on its way there or back
    Binder binder_;
    OptionPanel option_panel_;
    std::unique_ptr<DeviceBox> device_box_;
    std::vector<DumpView*> dumps_; // of both buffers
};

} // namespace vrk
