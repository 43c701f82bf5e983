// The one window: the five steps on the left, the buffers on the right.
#pragma once

#include "window/binder.h"
#include "window/device_box.h"

#include <QMainWindow>

#include <memory>

namespace vrk {

class MainWindow final : public QMainWindow {
public:
    explicit MainWindow(MainForm& form);

    // Beside everything else, for programs that have more to show.
    void add_panel(QWidget* panel);

private:
    QWidget* make_left();
    QWidget* make_right();
    QWidget* make_model_step();
    QWidget* make_file_step();
    QWidget* make_line_step();
    QWidget* make_option_step();
    QWidget* make_download_step();
    QWidget* make_buffer_page(int index);
    void closeEvent(QCloseEvent* event) override;

    MainForm& form_;
    Binder binder_;
    std::unique_ptr<DeviceBox> device_box_;
};

} // namespace vrk
