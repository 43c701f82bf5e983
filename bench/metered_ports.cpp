#include "bench/metered_ports.h"

#include "bench/times.h"

namespace bench {

namespace {

bool is_data_frame(std::span<const std::uint8_t> bytes)
{
    return bytes.size() > 100 && bytes[0] == 0x46 && bytes[1] == 0xB9 && (bytes[5] == 0x00 || bytes[5] == 0x30);
}

} // namespace

class MeteredPorts::Port final : public vrk::SerialPort {
public:
    Port(std::unique_ptr<vrk::SerialPort> port, WriteStage& stage)
        : port_(std::move(port))
        , stage_(stage)
    {
        port_->on_receive = [this] {
            if (on_receive)
                on_receive();
        };
    }
    bool open(const vrk::LineSettings& line) override
    {
        line_ = line;
        return port_->open(line);
    }
    void close() override { port_->close(); }
    bool is_open() const override { return port_->is_open(); }
    bool gone() const override { return port_->gone(); }
    bool set_line(const vrk::LineSettings& line) override
    {
        line_ = line;
        return port_->set_line(line);
    }
    std::size_t bytes_available() const override { return port_->bytes_available(); }
    std::size_t read(std::span<std::uint8_t> into) override
    {
        const std::size_t count = port_->read(into);
        if (writing_ && count > 0) {
            stage_.bytes += static_cast<std::int64_t>(count);
            stage_.ended = wall_seconds();
        }
        return count;
    }
    std::size_t bytes_to_write() const override { return port_->bytes_to_write(); }
    void write(std::span<const std::uint8_t> bytes) override
    {
        writing_ = is_data_frame(bytes);
        if (writing_) {
            if (stage_.bytes == 0)
                stage_.began = wall_seconds();
            stage_.bytes += static_cast<std::int64_t>(bytes.size());
            stage_.bits = vrk::bits_per_byte(line_);
            stage_.baud = line_.baud;
        }
        port_->write(bytes);
    }
    void discard() override { port_->discard(); }

private:
    std::unique_ptr<vrk::SerialPort> port_;
    WriteStage& stage_;
    vrk::LineSettings line_;
    bool writing_ = false;
};

std::unique_ptr<vrk::SerialPort> MeteredPorts::make(const std::string& path)
{
    return std::make_unique<Port>(ports_->make(path), stage_);
}

} // namespace bench
