#pragma once

#include <array>
#include <string_view>

// The glyphs of the single-stroke Roman letters by A. V. Hershey, from space (32) to 126 and the degree ring
// (127), in the format of J. Hurt: pairs of characters, each the code of a number plus 'R'. The first pair is
// the left and the right edge; the others are x and y (downwards) along the pen's way, " R" lifts the pen.
// The baseline is at y 9, the top of capitals at y -12. The NOTICE file says on which terms they are here.

namespace veldrin {

inline constexpr int kFirstGlyph = 32;

// clang-format off
inline constexpr std::array<std::string_view, 96> kSimplexGlyphs{
    "JZ", // space
    "MWRFRT RRYQZR[SZRY", // !
    "JZNFNM RVFVM", // "
    "H]SBLb RYBRb RLOZO RKUYU", // #
    "H\\PBP_ RTBT_ RYIWGTFPFMGKIKKLMMNOOUQWRXSYUYXWZT[P[MZKX", // $
    "F^[FI[ RNFPHPJOLMMKMIKIIJGLFNFPGSHVHYG[F RWTUUTWTYV[X[ZZ[X[VYTWT", // %
    "E_\\O\\N[MZMYNXPVUTXRZP[L[JZIYHWHUISJRQNRMSKSIRGPFNGMIMKNNPQUXWZY[[[\\Z\\Y", // &
    "MWRHQGRFSGSIRKQL", // '
    "KYVBTDRGPKOPOTPYR]T`Vb", // (
    "KYNBPDRGTKUPUTTYR]P`Nb", // )
    "JZRFRR RMIWO RWIMO", // *
    "E_RIR[ RIR[R", // +
    "MWSZR[QZRYSZS\\R^Q_", // ,
    "E_IR[R", // -
    "MWRYQZR[SZRY", // .
    "G][BIb", // /
    "H\\QFNGLJKOKRLWNZQ[S[VZXWYRYOXJVGSFQF", // 0
    "H\\NJPISFS[", // 1
    "H\\LKLJMHNGPFTFVGWHXJXLWNUQK[Y[", // 2
    "H\\MFXFRNUNWOXPYSYUXXVZS[P[MZLYKW", // 3
    "H\\UFKTZT RUFU[", // 4
    "H\\WFMFLOMNPMSMVNXPYSYUXXVZS[P[MZLYKW", // 5
    "H\\XIWGTFRFOGMJLOLTMXOZR[S[VZXXYUYTXQVOSNRNOOMQLT", // 6
    "H\\YFO[ RKFYF", // 7
    "H\\PFMGLILKMMONSOVPXRYTYWXYWZT[P[MZLYKWKTLRNPQOUNWMXKXIWGTFPF", // 8
    "H\\XMWPURRSQSNRLPKMKLLINGQFRFUGWIXMXRWWUZR[P[MZLX", // 9
    "MWRMQNROSNRM RRYQZR[SZRY", // :
    "MWRMQNROSNRM RSZR[QZRYSZS\\R^Q_", // ;
    "F^ZIJRZ[", // <
    "E_IO[O RIU[U", // =
    "F^JIZRJ[", // >
    "I[LKLJMHNGPFTFVGWHXJXLWNVORQRT RRYQZR[SZRY", // ?
    "E`WNVLTKQKOLNMMPMSNUPVSVUUVS RQKOMNPNSOUPV RWKVSVUXVZV\\T]Q]O\\L[JYHWGTFQFNGLHJJILHOHRIUJWLYNZQ[T[WZYYZX RXKWSWUXV", // @
    "I[RFJ[ RRFZ[ RMTWT", // A
    "G\\KFK[ RKFTFWGXHYJYLXNWOTP RKPTPWQXRYTYWXYWZT[K[", // B
    "H]ZKYIWGUFQFOGMILKKNKSLVMXOZQ[U[WZYXZV", // C
    "G\\KFK[ RKFRFUGWIXKYNYSXVWXUZR[K[", // D
    "H[LFL[ RLFYF RLPTP RL[Y[", // E
    "HZLFL[ RLFYF RLPTP", // F
    "H]ZKYIWGUFQFOGMILKKNKSLVMXOZQ[U[WZYXZVZS RUSZS", // G
    "G]KFK[ RYFY[ RKPYP", // H
    "NVRFR[", // I
    "JZVFVVUYTZR[P[NZMYLVLT", // J
    "G\\KFK[ RYFKT RPOY[", // K
    "HYLFL[ RL[X[", // L
    "F^JFJ[ RJFR[ RZFR[ RZFZ[", // M
    "G]KFK[ RKFY[ RYFY[", // N
    "G]PFNGLIKKJNJSKVLXNZP[T[VZXXYVZSZNYKXIVGTFPF", // O
    "G\\KFK[ RKFTFWGXHYJYMXOWPTQKQ", // P
    "G]PFNGLIKKJNJSKVLXNZP[T[VZXXYVZSZNYKXIVGTFPF RSWY]", // Q
    "G\\KFK[ RKFTFWGXHYJYLXNWOTPKP RRPY[", // R
    "H\\YIWGTFPFMGKIKKLMMNOOUQWRXSYUYXWZT[P[MZKX", // S
    "JZRFR[ RKFYF", // T
    "G]KFKULXNZQ[S[VZXXYUYF", // U
    "I[JFR[ RZFR[", // V
    "F^HFM[ RRFM[ RRFW[ R\\FW[", // W
    "H\\KFY[ RYFK[", // X
    "I[JFRPR[ RZFRP", // Y
    "H\\YFK[ RKFYF RK[Y[", // Z
    "KYOBOb RPBPb ROBVB RObVb", // [
    "KYKFY^", // backslash
    "KYTBTb RUBUb RNBUB RNbUb", // ]
    "JZPLRITL RMORJWO RRJR[", // ^
    "JZJ]Z]", // _
    "MWSFRGQIQKRLSKRJ", // `
    "I\\XMX[ RXPVNTMQMONMPLSLUMXOZQ[T[VZXX", // a
    "H[LFL[ RLPNNPMSMUNWPXSXUWXUZS[P[NZLX", // b
    "I[XPVNTMQMONMPLSLUMXOZQ[T[VZXX", // c
    "I\\XFX[ RXPVNTMQMONMPLSLUMXOZQ[T[VZXX", // d
    "I[LSXSXQWOVNTMQMONMPLSLUMXOZQ[T[VZXX", // e
    "MYWFUFSGRJR[ ROMVM", // f
    "I\\XMX]W`VaTbQbOa RXPVNTMQMONMPLSLUMXOZQ[T[VZXX", // g
    "I\\MFM[ RMQPNRMUMWNXQX[", // h
    "NVQFRGSFREQF RRMR[", // i
    "MWRFSGTFSERF RSMS^RaPbNb", // j
    "IZMFM[ RWMMW RQSX[", // k
    "NVRFR[", // l
    "CaGMG[ RGQJNLMOMQNRQR[ RRQUNWMZM\\N]Q][", // m
    "I\\MMM[ RMQPNRMUMWNXQX[", // n
    "I\\QMONMPLSLUMXOZQ[T[VZXXYUYSXPVNTMQM", // o
    "H[LMLb RLPNNPMSMUNWPXSXUWXUZS[P[NZLX", // p
    "I\\XMXb RXPVNTMQMONMPLSLUMXOZQ[T[VZXX", // q
    "KXOMO[ ROSPPRNTMWM", // r
    "J[XPWNTMQMNNMPNRPSUTWUXWXXWZT[Q[NZMX", // s
    "MYRFRWSZU[W[ ROMVM", // t
    "I\\MMMWNZP[S[UZXW RXMX[", // u
    "JZLMR[ RXMR[", // v
    "G]JMN[ RRMN[ RRMV[ RZMV[", // w
    "J[MMX[ RXMM[", // x
    "JZLMR[ RXMR[P_NaLbKb", // y
    "J[XMM[ RMMXM RM[X[", // z
    "KYTBRCQDPFPHQJRKSMSOQQ RRCQEQGRISJTLTNSPORSTTVTXSZR[Q]Q_Ra RQSSUSWRYQZP\\P^Q`RaTb", // {
    "NVRBRb", // |
    "KYPBRCSDTFTHSJRKQMQOSQ RRCSESGRIQJPLPNQPURQTPVPXQZR[S]S_Ra RSSQUQWRYSZT\\T^S`RaPb", // }
    "F^IUISJPLONOPPTSVTXTZS[Q RISJQLPNPPQTTVUXUZT[Q[O", // ~
    "KYQFOGNINKOMQNSNUMVKVIUGSFQF", // degree
};

// Made from the ones above: a crossed O and a cross over a bar.
inline constexpr std::string_view kDiameterGlyph = "G]PFNGLIKKJNJSKVLXNZP[T[VZXXYVZSZNYKXIVGTFPF RI][D";
inline constexpr std::string_view kPlusMinusGlyph = "E_RHRV RIO[O RI[[[";
// clang-format on

} // namespace veldrin
