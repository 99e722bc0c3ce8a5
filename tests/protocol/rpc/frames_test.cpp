// What clients send in pieces, too long, or wrong.
#include <gtest/gtest.h>

#include <deque>
#include <thread>

#include "protocol/rpc/message_stream.h"

namespace korvant::rpc {
namespace {

TEST(Frames, ComeOutWholeHoweverTheBytesArrive) {
    const std::string bytes = framed("{\"a\":1}") + "content-length:2\nX-Other: 1\n\n{}" + "\r\n" +
                              framed("") + framed("[3]");
    for (const std::size_t step : {std::size_t{1}, std::size_t{3}, std::size_t{7}, bytes.size()}) {
        FrameReader reader;
        std::vector<std::string> bodies;
        for (std::size_t i = 0; i < bytes.size(); i += step) {
            reader.feed(bytes.substr(i, step));
            while (auto body = reader.next()) bodies.push_back(*body);
        }
        EXPECT_EQ(bodies, (std::vector<std::string>{"{\"a\":1}", "{}", "", "[3]"}));
        EXPECT_FALSE(reader.broken());
    }
}

TEST(Frames, ThatCannotBeReadEndTheStream) {
    for (const std::string& bytes :
         {std::string("Content-Length: many\r\n\r\n"), std::string("Content-Length: -5\r\n\r\n"),
          std::string("Content-Length: 99999999999999999999\r\n\r\n"),
          std::string("Content-Length: 100000000\r\n\r\n"), std::string(10 << 20, 'x'),
          "Content-Length: 5;" + std::string(20000, 'x')}) {
        FrameReader reader;
        reader.feed(bytes);
        EXPECT_FALSE(reader.next());
        EXPECT_TRUE(reader.broken()) << bytes.substr(0, 40);
        reader.skipToNext();
        reader.feed("{\"lost\":1}");
        EXPECT_FALSE(reader.next());
        for (const char byte : framed("{}")) reader.feed({&byte, 1});
        EXPECT_EQ(reader.next(), "{}") << bytes.substr(0, 40);
        EXPECT_FALSE(reader.broken());
    }
}

TEST(Json, TooDeepOrWrongIsNoMessage) {
    EXPECT_FALSE(readJson(std::string(100'000, '[')));
    EXPECT_FALSE(readJson("{\"a\":"));
    EXPECT_FALSE(readJson("\"\xff\""));
    // Halves of a character, which editors send when one is cut in two.
    EXPECT_EQ(*readJson(R"("\ud834\udd1e \ud834 \udd1e\\ud834\ud834\u0041")"),
              "\xF0\x9D\x84\x9E \xEF\xBF\xBD \xEF\xBF\xBD\\ud834\xEF\xBF\xBD"
              "A");
    EXPECT_FALSE(readJson(R"("\ud834 \u12")"));
    EXPECT_TRUE(readJson("{\"brackets\": \"" + std::string(1000, '[') + "\\\"[\"}"));
    const Json odd = {{"number", 1e300}, {"text", 5}, {"truth", "yes"}};
    EXPECT_EQ(numberOf(odd, "number", 7), 7);
    EXPECT_EQ(textOf(odd, "text", "none"), "none");
    EXPECT_TRUE(truthOf(odd, "truth", true));
    EXPECT_TRUE(memberOf(Json(3), "any").is_null());
}

TEST(Loopback, CarriesMessagesAndEndsWaits) {
    std::string error;
    const auto listener = listenOnLoopback(0, error);
    ASSERT_TRUE(listener) << error;
    std::shared_ptr<Channel> served;
    std::thread accepting([&] { served = listener->accept(); });
    const auto client = connectToLoopback(listener->port(), error);
    accepting.join();
    ASSERT_TRUE(client && served) << error;
    MessageStream stream(served);
    stream.begin(MessageStream::Listener());
    ASSERT_TRUE(client->write(framed("{\"seq\":1}") + framed("no json") + framed("{\"seq\":2}")));
    EXPECT_EQ(numberOf(*stream.mailbox().take(std::chrono::seconds(5)), "seq"), 1);
    EXPECT_EQ(numberOf(*stream.mailbox().take(std::chrono::seconds(5)), "seq"), 2);
    EXPECT_TRUE(stream.send({{"seq", 3}}));
    std::string bytes;
    ASSERT_TRUE(client->read(bytes));
    EXPECT_NE(bytes.find("{\"seq\":3}"), std::string::npos);
    client->close();
    EXPECT_FALSE(stream.mailbox().take(std::chrono::seconds(5)));
    EXPECT_TRUE(stream.mailbox().ended());
    std::thread waiting([&] { EXPECT_FALSE(listener->accept()); });
    listener->close();
    waiting.join();
}

TEST(Mailbox, EndsBehindItsLastMessage) {
    Mailbox mailbox;
    for (int i = 0; i < 2; ++i) mailbox.post({{"seq", i}});
    EXPECT_EQ(numberOf(*mailbox.take(std::chrono::milliseconds(0)), "seq"), 0);
    mailbox.wake();
    mailbox.end();
    EXPECT_FALSE(mailbox.ended());
    EXPECT_TRUE(mailbox.take(std::chrono::milliseconds(0)));
    EXPECT_TRUE(mailbox.ended());
}

}  // namespace
}  // namespace korvant::rpc
