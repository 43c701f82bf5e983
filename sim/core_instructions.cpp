// What each instruction does.
#include "sim/core_8052.h"

#include "sim/hex_text.h"

#include <bit>
#include <utility>

namespace sim {

namespace {

constexpr std::uint8_t DPL = 0x82, DPH = 0x83, P2 = 0xA0, B = 0xF0;

// Machine cycles by the code of the instruction: a row for each upper half. Those on @Ri and Rn follow from column 6.
// clang-format off
constexpr std::uint8_t cycles_of[16][7] = {
//    0  1  2  3  4  5  6..F
    { 1, 2, 2, 1, 1, 1, 1 }, // 0 NOP  AJMP LJMP RR   INC  INC  INC
    { 2, 2, 2, 1, 1, 1, 1 }, // 1 JBC  ACALL LCALL RRC DEC DEC  DEC
    { 2, 2, 2, 1, 1, 1, 1 }, // 2 JB   AJMP RET  RL   ADD
    { 2, 2, 2, 1, 1, 1, 1 }, // 3 JNB  ACALL RETI RLC ADDC
    { 2, 2, 1, 2, 1, 1, 1 }, // 4 JC   AJMP ORL  ORL  ORL
    { 2, 2, 1, 2, 1, 1, 1 }, // 5 JNC  ACALL ANL ANL  ANL
    { 2, 2, 1, 2, 1, 1, 1 }, // 6 JZ   AJMP XRL  XRL  XRL
    { 2, 2, 2, 2, 1, 2, 1 }, // 7 JNZ  ACALL ORL JMP  MOV  MOV  MOV
    { 2, 2, 2, 2, 4, 2, 2 }, // 8 SJMP AJMP ANL  MOVC DIV  MOV  MOV
    { 2, 2, 2, 2, 1, 1, 1 }, // 9 MOV  ACALL MOV MOVC SUBB
    { 2, 2, 1, 2, 4, 1, 2 }, // A ORL  AJMP MOV  INC  MUL  -    MOV
    { 2, 2, 1, 1, 2, 2, 2 }, // B ANL  ACALL CPL CPL  CJNE
    { 2, 2, 1, 1, 1, 1, 1 }, // C PUSH AJMP CLR  CLR  SWAP XCH  XCH
    { 2, 2, 1, 1, 1, 2, 2 }, // D POP  ACALL SETB SETB DA  DJNZ DJNZ (XCHD takes one)
    { 2, 2, 2, 2, 1, 1, 1 }, // E MOVX AJMP MOVX MOVX CLR  MOV  MOV
    { 2, 2, 2, 2, 1, 1, 1 }, // F MOVX ACALL MOVX MOVX CPL MOV  MOV
};
// clang-format on

} // namespace

void Core8052::call(std::uint16_t address)
{
    push(low(pc_));
    push(low(pc_ >> 8U));
    pc_ = address;
}

void Core8052::jump_if(bool condition)
{
    const auto distance = static_cast<std::int8_t>(fetch());
    if (condition)
        pc_ = static_cast<std::uint16_t>(pc_ + distance);
}

void Core8052::add(std::uint8_t value, bool with_carry)
{
    const unsigned in = with_carry && carry() ? 1 : 0;
    const unsigned sum = a() + value + in;
    const bool half = (a() & 15U) + (value & 15U) + in > 15;
    const bool overflow = (~(a() ^ value) & (a() ^ sum) & 0x80U) != 0;
    psw() = low((psw() & 0x3BU) | (sum > 255 ? 0x80U : 0) | (half ? 0x40U : 0) | (overflow ? 4U : 0));
    a() = low(sum);
}

void Core8052::subtract(std::uint8_t value)
{
    const unsigned in = carry() ? 1 : 0;
    const unsigned difference = a() - value - in;
    const bool half = (a() & 15U) < (value & 15U) + in;
    const bool borrow = a() < value + in;
    const bool overflow = ((a() ^ value) & (a() ^ difference) & 0x80U) != 0;
    psw() = low((psw() & 0x3BU) | (borrow ? 0x80U : 0) | (half ? 0x40U : 0) | (overflow ? 4U : 0));
    a() = low(difference);
}

void Core8052::decimal_adjust()
{
    unsigned sum = a();
    if ((sum & 15U) > 9 || (psw() & 0x40U) != 0)
        sum += 6;
    bool out = carry() || sum > 255;
    sum = (sum & 255U) | (out ? 0x100U : 0);
    if ((sum >> 4U) > 9)
        sum += 0x60;
    out = out || sum > 255;
    a() = low(sum);
    set_carry(out);
}

void Core8052::compare_and_jump(std::uint8_t one, std::uint8_t other)
{
    set_carry(one < other);
    jump_if(one != other);
}

std::uint8_t Core8052::operand(unsigned column)
{
    switch (column) {
    case 4:
        return fetch();
    case 5:
        return read(fetch());
    case 6:
    case 7:
        return ram_[r(column - 6)];
    default:
        return r(column - 8);
    }
}

// The codes from x6 on: @R0, @R1, R0 to R7.
void Core8052::execute_column(std::uint8_t opcode)
{
    const unsigned column = opcode & 15U;
    std::uint8_t& it = column < 8 ? ram_[r(column - 6)] : r(column - 8);
    switch (opcode >> 4U) {
    case 0x0:
        ++it;
        break;
    case 0x1:
        --it;
        break;
    case 0x2:
    case 0x3:
        add(it, (opcode & 0x10U) != 0);
        break;
    case 0x4:
        a() |= it;
        break;
    case 0x5:
        a() &= it;
        break;
    case 0x6:
        a() ^= it;
        break;
    case 0x7:
        it = fetch();
        break;
    case 0x8:
        write(fetch(), it);
        break;
    case 0x9:
        subtract(it);
        break;
    case 0xA:
        it = read(fetch());
        break;
    case 0xB:
        compare_and_jump(it, fetch());
        break;
    case 0xC:
        std::swap(it, a());
        break;
    case 0xD:
        if (column < 8) {
            const std::uint8_t was = it;
            it = low((it & 0xF0U) | (a() & 0x0FU));
            a() = low((a() & 0xF0U) | (was & 0x0FU));
        } else {
            jump_if(--it != 0);
        }
        break;
    case 0xE:
        a() = it;
        break;
    default:
        it = a();
    }
}

unsigned Core8052::execute(std::uint8_t opcode)
{
    const unsigned row = opcode >> 4U;
    const unsigned column = opcode & 15U;
    const unsigned cycles = cycles_of[row][column < 6 ? column : 6];
    if (column >= 6) {
        execute_column(opcode);
        return row == 0xD && column < 8 ? 1 : cycles;
    }
    if (column == 1) { // AJMP, ACALL
        const unsigned page = (opcode & 0xE0U) << 3U;
        const std::uint8_t rest = fetch();
        const auto to = static_cast<std::uint16_t>((pc_ & 0xF800U) | page | rest);
        if ((opcode & 0x10U) != 0)
            call(to);
        else
            pc_ = to;
        return cycles;
    }
    switch (opcode) {
    case 0x00: // NOP
        break;
    case 0x02: // LJMP
    case 0x12: { // LCALL
        const std::uint8_t high = fetch();
        const auto to = static_cast<std::uint16_t>(high << 8 | fetch());
        if (opcode == 0x12)
            call(to);
        else
            pc_ = to;
        break;
    }
    case 0x03: // RR A
        a() = std::rotr(a(), 1);
        break;
    case 0x04: // INC A
        ++a();
        break;
    case 0x05: { // INC direct
        const std::uint8_t at = fetch();
        write(at, low(rmw(at) + 1U));
        break;
    }
    case 0x10: { // JBC
        const std::uint8_t at = fetch();
        const bool set = bit(at);
        if (set)
            set_bit(at, false);
        jump_if(set);
        break;
    }
    case 0x13: { // RRC A
        const bool out = (a() & 1U) != 0;
        a() = low(a() >> 1U | (carry() ? 0x80U : 0));
        set_carry(out);
        break;
    }
    case 0x14: // DEC A
        --a();
        break;
    case 0x15: { // DEC direct
        const std::uint8_t at = fetch();
        write(at, low(rmw(at) - 1U));
        break;
    }
    case 0x20: // JB
        jump_if(bit(fetch()));
        break;
    case 0x22: // RET
    case 0x32: { // RETI
        const std::uint8_t high = pop();
        pc_ = static_cast<std::uint16_t>(high << 8 | pop());
        break;
    }
    case 0x23: // RL A
        a() = std::rotl(a(), 1);
        break;
    case 0x24: // ADD, ADDC
    case 0x25:
    case 0x34:
    case 0x35:
        add(operand(column), (opcode & 0x10U) != 0);
        break;
    case 0x30: // JNB
        jump_if(!bit(fetch()));
        break;
    case 0x33: { // RLC A
        const bool out = (a() & 0x80U) != 0;
        a() = low(2U * a() + (carry() ? 1U : 0));
        set_carry(out);
        break;
    }
    case 0x40: // JC
        jump_if(carry());
        break;
    case 0x42: // ORL, ANL, XRL direct, A
    case 0x52:
    case 0x62:
    case 0x43: // and with a constant
    case 0x53:
    case 0x63: {
        const std::uint8_t at = fetch();
        const unsigned with = column == 2 ? a() : fetch();
        const unsigned was = rmw(at);
        write(at, low(row == 4 ? was | with : row == 5 ? was & with : was ^ with));
        break;
    }
    case 0x44:
    case 0x45:
        a() |= operand(column);
        break;
    case 0x50: // JNC
        jump_if(!carry());
        break;
    case 0x54:
    case 0x55:
        a() &= operand(column);
        break;
    case 0x60: // JZ
        jump_if(a() == 0);
        break;
    case 0x64:
    case 0x65:
        a() ^= operand(column);
        break;
    case 0x70: // JNZ
        jump_if(a() != 0);
        break;
    case 0x72: // ORL C, bit
        set_carry(bit(fetch()) || carry());
        break;
    case 0x73: // JMP @A+DPTR
        pc_ = static_cast<std::uint16_t>(dptr() + a());
        break;
    case 0x74:
        a() = fetch();
        break;
    case 0x75: { // MOV direct, constant
        const std::uint8_t at = fetch();
        write(at, fetch());
        break;
    }
    case 0x80: // SJMP
        jump_if(true);
        break;
    case 0x82: // ANL C, bit
        set_carry(bit(fetch()) && carry());
        break;
    case 0x83: // MOVC A, @A+PC
        a() = code_[static_cast<std::uint16_t>(pc_ + a())];
        break;
    case 0x84: { // DIV AB
        const std::uint8_t divisor = sfr(B);
        psw() = low((psw() & 0x7BU) | (divisor == 0 ? 4U : 0));
        if (divisor != 0) {
            sfr_[B - 0x80] = low(a() % divisor);
            a() = low(a() / divisor);
        }
        break;
    }
    case 0x85: { // MOV direct, direct: the source comes first
        const std::uint8_t value = read(fetch());
        write(fetch(), value);
        break;
    }
    case 0x90: // MOV DPTR
        sfr_[DPH - 0x80] = fetch();
        sfr_[DPL - 0x80] = fetch();
        break;
    case 0x92: // MOV bit, C
        set_bit(fetch(), carry());
        break;
    case 0x93: // MOVC A, @A+DPTR
        a() = code_[static_cast<std::uint16_t>(dptr() + a())];
        break;
    case 0x94:
    case 0x95:
        subtract(operand(column));
        break;
    case 0xA0: // ORL C, /bit
        set_carry(!bit(fetch()) || carry());
        break;
    case 0xA2: // MOV C, bit
        set_carry(bit(fetch()));
        break;
    case 0xA3: { // INC DPTR
        const unsigned next = dptr() + 1U;
        sfr_[DPL - 0x80] = low(next);
        sfr_[DPH - 0x80] = low(next >> 8U);
        break;
    }
    case 0xA4: { // MUL AB
        const unsigned product = a() * sfr(B);
        a() = low(product);
        sfr_[B - 0x80] = low(product >> 8U);
        psw() = low((psw() & 0x7BU) | (product > 255 ? 4U : 0));
        break;
    }
    case 0xB0: // ANL C, /bit
        set_carry(!bit(fetch()) && carry());
        break;
    case 0xB2: { // CPL bit
        const std::uint8_t at = fetch();
        set_bit(at, !bit(at));
        break;
    }
    case 0xB3: // CPL C
        set_carry(!carry());
        break;
    case 0xB4:
    case 0xB5: // CJNE A
        compare_and_jump(a(), operand(column));
        break;
    case 0xC0: // PUSH
        push(read(fetch()));
        break;
    case 0xC2: // CLR bit
        set_bit(fetch(), false);
        break;
    case 0xC3: // CLR C
        set_carry(false);
        break;
    case 0xC4: // SWAP
        a() = std::rotl(a(), 4);
        break;
    case 0xC5: { // XCH A, direct
        const std::uint8_t at = fetch();
        const std::uint8_t was = read(at);
        write(at, a());
        a() = was;
        break;
    }
    case 0xD0: // POP
        write(fetch(), pop());
        break;
    case 0xD2: // SETB bit
        set_bit(fetch(), true);
        break;
    case 0xD3: // SETB C
        set_carry(true);
        break;
    case 0xD4:
        decimal_adjust();
        break;
    case 0xD5: { // DJNZ direct
        const std::uint8_t at = fetch();
        write(at, low(rmw(at) - 1U));
        jump_if(direct(at) != 0);
        break;
    }
    case 0xE0: // MOVX A, @DPTR
        a() = xram_[dptr()];
        break;
    case 0xE2: // MOVX A, @Ri
    case 0xE3:
        a() = xram_[static_cast<std::uint16_t>(sfr(P2) << 8 | r(column - 2))];
        break;
    case 0xE4: // CLR A
        a() = 0;
        break;
    case 0xE5:
        a() = read(fetch());
        break;
    case 0xF0: // MOVX @DPTR, A
        xram_[dptr()] = a();
        break;
    case 0xF2: // MOVX @Ri, A
    case 0xF3:
        xram_[static_cast<std::uint16_t>(sfr(P2) << 8 | r(column - 2))] = a();
        break;
    case 0xF4: // CPL A
        a() = low(~a());
        break;
    case 0xF5: // MOV direct, A
        write(fetch(), a());
        break;
    default:
        complaints_.push_back("no instruction: " + hex(opcode, 2));
    }
    return cycles;
}

} // namespace sim
