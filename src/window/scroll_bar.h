// The scroll bar of the dump: where only its slider has moved, it paints only the slider's old place and its new one.
// To fill the whole groove, Qt wakes other threads, and that takes longer than to paint a page of text.
#pragma once

#include <QScrollBar>

namespace vrk {

class SliderScrollBar final : public QScrollBar {
public:
    SliderScrollBar();

private:
    void sliderChange(SliderChange change) override;
    void resizeEvent(QResizeEvent* event) override;
    QRect place_of_slider() const;

    bool is_at_end_ = true; // there a bar looks otherwise: its arrow is off
    QRect slider_; // as last shown
};

} // namespace vrk
