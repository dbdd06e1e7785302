#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "platform/linux/mail/body_text.h"
#include "platform/linux/mail/mail_header.h"

namespace gorbex::test {
namespace {

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(MailHeaders, AreReadAsTheirSendersMeantThem) {
  struct Case {
    std::string header, subject, sender, address;
  };
  const Case cases[] = {
      {"Subject: build request\nFrom: Anna <a@b.c>", "build request", "Anna", "a@b.c"},
      {"SUBJECT :\tbuild\r\n  request  \r\nfrom: a@b.c\r\n", "build request", "a@b.c", "a@b.c"},
      {"Subject: =?UTF-8?B?YnVpbGQ=?=\n =?utf-8?Q?_request?=\nFrom: <a@b.c>", "build request",
       "a@b.c", "a@b.c"},
      {"Subject: =?iso-8859-15?Q?=A4?= x =?koi8-r?Q?=C1?=\nFrom: \"Fox, A.\" <a@b.c>", "\x80 x ?",
       "Fox, A.", "a@b.c"},
      {"Subject: gr\xC3\xBC\xC3\x9F\nFrom: =?iso-8859-1?Q?J=F6rg?= Fox <a@b.c>", "gr\xFC\xDF",
       "J\xF6rg Fox", "a@b.c"},
      {"Subject: gr\xFC\xDF\nFrom: J\xF6rg <a@b.c>", "gr\xFC\xDF", "J\xF6rg", "a@b.c"},
      {"From: John Smith", "", "John Smith", ""},
      {"From: \"John Smith\" <>", "", "John Smith", ""},
      {"From: a@b.c (John)\nSubject:", "", "a@b.c", "a@b.c"},
      {"From: Team: Anna <a@b.c>, x@y;", "", "Anna", "a@b.c"},
      {"From: undisclosed:;", "", "undisclosed:;", ""},
      {"From: Eve <e@b.c\rBcc: x@y.z>", "", "Eve", ""},
      {"Sender: s@b.c", "", "s@b.c", "s@b.c"},
      {"Subject: =?x?Q?a?= =?utf-8?X?b?= =?utf-8?B?", "a=?utf-8?X?b?= =?utf-8?B?", "", ""},
      {"Subject: =?utf-8?Q?a=0D=0Ab?=", "a  b", "", ""},
      {"no field\n: x\nSubject: y\n\nSubject: z", "y", "", ""},
      {"", "", "", ""}};
  for (const Case& c : cases) {
    const auto read = ReadMailHeader(c.header);
    EXPECT_EQ(read.subject, c.subject) << c.header;
    EXPECT_EQ(read.senderName, c.sender) << c.header;
    EXPECT_EQ(read.senderAddress, c.address) << c.header;
  }
}

TEST(MailHeaders, TellWhichMailsProgramsSent) {
  for (const char* sign :
       {"Auto-Submitted: auto-replied", "auto-submitted: Auto-Generated; x", "Precedence: BULK",
        "Precedence: list", "Return-Path: <>", "List-Id: <x.y>"}) {
    EXPECT_TRUE(ReadMailHeader(std::string("From: a@b\n") + sign).isAutomatic) << sign;
  }
  for (const char* sign :
       {"Auto-Submitted: no", "Auto-Submitted: No (really)", "Precedence: first-class",
        "Return-Path: <a@b>", "X-Auto-Response-Suppress: All", "X: y\n\nList-Id: body"}) {
    EXPECT_FALSE(ReadMailHeader(std::string("From: a@b\n") + sign).isAutomatic) << sign;
  }
}

// A part with its type and text.
std::string Part(const std::string& type, const std::string& text) {
  return "Content-Type: " + type + "\n\n" + text;
}

std::string Multipart(const std::string& kind, const std::vector<std::string>& parts) {
  std::string text = "Content-Type: multipart/" + kind + ";\n boundary=\"=_" + kind + "\"\n\nhi\n";
  for (const auto& part : parts) text += "--=_" + kind + "\n" + part + "\n";
  return text + "--=_" + kind + "--\nbye\n";
}

TEST(MailBodies, AreTheTextsTheirReadersSee) {
  const std::string html =
      "<html><head><title>t</title><style>p{}</style></head><body><p>A&amp;B"
      "&nbsp;&eacute;&#x20AC;&#8364;&zz;<!-- c --><br>1 &lt;\n 2<div>x</div>"
      "<script>if(a<b){'</p>'}</script></body>";
  const std::string shown = "A&B \xE9\x80\x80&zz;\r\n1 < 2\r\nx\r\n";
  struct Case {
    std::string mail, text;
  };
  const Case cases[] = {
      {"Subject: x\n\nGET,\nBUI\r\n", "GET,\r\nBUI\r\n"},
      {"\nno header", "no header"},
      {"Subject: only a header", ""},
      {Part("text/plain; charset=utf-8", "\xC3\xA9\xE2\x82\xAC\xE4\xB8\xAD\xFF\xC3"),
       "\xE9\x80???"},
      {Part("text/plain", "\xC3\xA9"), "\xE9"},
      {Part("text/plain", "\xE9\x80"), "\xE9\x80"},
      {Part("TEXT/Plain; charset=\"ISO-8859-15\"", "\xA4"), "\x80"},
      {Part("text/plain; charset=windows-1250", "\x9C"), "?"},
      {Part("text/plain; charset=no-such-set", "\xE9"), "\xE9"},
      {Part("text/plain; format=flowed", "a\rb"), "a\r\nb"},
      {Part("text/plain; format=flowed",
            "GET,PRO C:\\My \n Projects\\A.vbp,\n\n> x \n> y\nz\n-- \nme \n-- \nyou\n"),
       "GET,PRO C:\\My Projects\\A.vbp,\r\n\r\n>x y\r\nz\r\n-- \r\nme \r\n-- \r\nyou\r\n"},
      {Part("text/plain; delsp=\"Yes\"; Format=Flowed", "PRO C:\\Very \nLong\\ \nA.vbp, \n"),
       "PRO C:\\VeryLong\\A.vbp,\r\n"},
      {Part("text/plain; charset=utf-8",
            "PRO\xC2\xA0"
            "C:\\A.vbp,"),
       "PRO C:\\A.vbp,"},
      {Part("nonsense", "x"), ""},
      {"Content-Transfer-Encoding: Quoted-Printable\nContent-Type: text/plain; charset=iso-8859-1"
       "\n\na=E9=\nb =3d=0D=0A=",
       "a\xE9"
       "b =\r\n"},
      {"Content-Transfer-Encoding: base64\n\nR0VU\r\nLEJV\nSQ==\n", "GET,BUI"},
      {Part("text/html", html), shown},
      {Multipart("alternative", {Part("text/html", html), Part("text/plain", "plain")}), shown},
      {Multipart("alternative", {Part("text/plain", "plain"), Part("text/html", html)}), shown},
      {Multipart("alternative", {Part("text/plain", "plain"), Part("text/html", "<p> </p>")}),
       "plain"},
      {Multipart("mixed", {Part("text/plain", " \n"), Part("text/html", html)}), shown},
      {Multipart("alternative", {Part("text/html", html), Part("text/calendar", "no")}), shown},
      {Multipart("mixed",
                 {"Content-Disposition: attachment\n\nno",
                  Multipart("related", {Multipart("alternative", {Part("text/plain", "deep\n")})}),
                  Part("text/plain", "footer")}),
       "deep\r\n"},
      {Multipart("mixed", {Part("message/rfc822", "Subject: x\n\nno")}), ""},
      {"Content-Type: multipart/mixed; boundary=b\n\n--bb\n\nno\n--b \n\nyes\n--bx\n--b\n\nno",
       "yes\r\n--bx"},
      {"Content-Type: multipart/mixed; boundary=b\n\n--b\n\ncut off", "cut off"},
      {"Content-Type: multipart/mixed\n\n--b\n\nno boundary", ""}};
  for (const Case& c : cases) EXPECT_EQ(BodyText(c.mail), c.text) << c.mail;
}

// Each is read in a time that grows with its size, without end of memory or stack.
TEST(MailBodies, MayBeMeantToHarm) {
  std::string nested, base64;
  for (int i = 0; i < 10'000; ++i) {
    nested += "Content-Type: multipart/mixed; boundary=b" + std::to_string(i) + "\n\n--b" +
              std::to_string(i) + "\n";
  }
  for (int i = 0; i < 180'000; ++i) base64 += "QUJD" + Repeated("QUJD", 18) + "\r\n";
  const std::string encoded = "Content-Transfer-Encoding: ";
  struct Case {
    std::string name, mail;
    std::size_t size;
  };
  const Case cases[] = {
      {"nested", nested + "\nx", 0},
      {"same boundary", Repeated("Content-Type: multipart/mixed; boundary=b\n\n--b\n", 50'000), 0},
      {"many parts", Multipart("mixed", {Repeated("X: y\n--=_mixed\n", 1'000'000)}), 0},
      {"many fields", Repeated("X-Field: value\n", 500'000) + "\nx", 1},
      {"long folds", "Content-Type: text/plain;" + Repeated("\n a=b;", 1'000'000) + "\n\nx", 1},
      {"no line end", Repeated("x", 10'000'000), 0},
      {"line feeds", "\n" + Repeated("\n", 5'000'000), 10'000'000},
      {"base64", encoded + "base64\n\n" + base64, std::size_t{180'000} * 57},
      {"no base64", encoded + "base64\n\n" + Repeated("?", 10'000'000), 0},
      {"quoted", encoded + "quoted-printable\n\n" + Repeated("=", 10'000'000), 0},
      {"tags", Part("text/html", Repeated("<", 5'000'000) + Repeated("<a", 2'000'000)), 0},
      {"comments", Part("text/html", Repeated("<!-", 1'000'000) + Repeated("<!--", 999'999)), 0},
      {"scripts", Part("text/html", Repeated("<script>", 1'000'000)), 0},
      {"names", Part("text/html", Repeated("&#x", 3'000'000)), 9'000'000},
      {"not UTF-8", Part("text/plain; charset=utf-8", Repeated("\xBF", 10'000'000)), 1},
      {"too long", "\n" + Repeated("x", 40'000'000), std::size_t{16} << 20U}};
  const auto within = [](double seconds, const auto& read, const std::string& name) {
    // A busy machine must not count.
    const auto start = std::clock();
    read();
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, seconds) << name;
  };
  for (const Case& c : cases) {
    std::string text;
    within(
        20, [&] { text = BodyText(c.mail); }, c.name);
    EXPECT_TRUE(c.size == 0 || text.size() == c.size) << c.name << " " << text.size();
  }
  for (const std::string unit : {"=?", "=?utf-8?B?QQ?= ", "=?utf-8?Q?=C3?=", "<", "(", "\"",
                                 "a:b@c,", "=?utf-8?B?", "\\", "@", ","}) {
    const auto value = Repeated(unit, 200'000);
    const std::string header = "Subject: " + value + "\nFrom: " + value;
    within(
        5, [&] { static_cast<void>(ReadMailHeader(header)); }, unit);
  }
}

}  // namespace
}  // namespace gorbex::test
