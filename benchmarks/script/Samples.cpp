#include "benchmarks/script/Samples.h"

#include <array>

namespace PrompterCore::Samples {

namespace {

constexpr std::array<Sample, 11> all = {
    Sample{"English",
           "# What the harbour taught us\n"
           "Good evening, and thank you for coming out on such a cold night. When my brother and I "
           "bought the old ferry in 2009, everybody said it couldn't be done; the engine hadn't "
           "turned in eleven years, and there were 340 rivets missing from the hull.\n"
           "We're not engineers. We'd never welded anything, let alone a ship! But we had time, a "
           "borrowed crane and about $1,500 between us.\n\n"},
    Sample{
        "EnglishTypographic",
        "# “What the harbour taught us”\n"
        "Good evening – and thank you for coming out on such a cold night. When my brother and I "
        "bought the old ferry in 2009, everybody said it couldn’t be done; the engine hadn’t "
        "turned in eleven years … and there were 340 rivets missing from the hull.\n"
        "“We’re not engineers,” he said. “We’d never welded anything – let alone a ship!” But we "
        "had time, a borrowed crane, and about £1,500 between us.\n\n"},
    Sample{"EuropeanAccents",
           "# Ce que la rivière a gardé\n"
           "Hélène, l’aînée, répétait déjà à l’école que la forêt brûlée renaîtrait où l’été "
           "s’achève. Die Mädchen hörten drüben süße Klänge über dem grünen Fluß, und später "
           "erzählten sie’s den Ältesten. El niño soñó mañana con pingüinos, ¿quién podría "
           "creérselo?\n"
           "Příliš žluťoučký kůň úpěl ďábelské ódy; łódź płynęła ku źródłu, w ciszę. "
           "Çocuğun öğretmeni gün ışığında şöyle güldü.\n\n"},
    Sample{"Japanese",
           "# 港が教えてくれたこと\n"
           "みなさん、こんばんは。今夜は寒い中、お集まりいただきありがとうございます。"
           "兄と私が古いフェリーを買ったのは二〇〇九年のことでした。"
           "エンジンは十一年も動いておらず、誰もが無理だと言いました。\n"
           "私たちは技術者ではありません。けれど、時間と、借りたクレーンと、"
           "少しのお金だけはあったのです。がんばって、ようやく海に出ました。\n\n"},
    Sample{"Chinese",
           "# 港口教会我们的事\n"
           "大家晚上好，谢谢各位在这么冷的夜里来到这里。我和哥哥在二〇〇九年买下那艘旧渡轮的时候，"
           "所有人都说这是不可能的；发动机已经十一年没有转动过，船身上还少了三百四十颗铆钉。\n"
           "我们不是工程师，也从来没有焊接过任何东西。可是我们有时间，有一台借来的起重机，"
           "还有一点点钱。\n\n"},
    Sample{"Emoji",
           "# 🎬 Take one\n"
           "👋🏽 Hi all 🎉🎉 we ❤️ this 👨‍👩‍👧‍👦 so much 😀😃😄 "
           "and "
           "🇫🇷🇯🇵 "
           "too "
           "👍🏻👍🏿 "
           "1️⃣ first 2️⃣ second 🏳️‍🌈 🧑🏽‍🚀 🚀✨\n"
           "😂😂😂 okay 🤷‍♀️ 🤦🏼‍♂️ ☕️ 🍕🍔 done ✅\n\n"},
    Sample{"Russian",
           "# Чему нас научила гавань\n"
           "Добрый вечер, и спасибо, что пришли в такой холод. Когда мы с братом купили старый "
           "паром, все твердили, что ничего не выйдет; двигатель молчал одиннадцать лет.\n\n"},
    Sample{
        "Korean",
        "# 항구가 가르쳐 준 것\n"
        "안녕하세요, 이렇게 추운 밤에 와 주셔서 고맙습니다. 형과 제가 낡은 배를 샀을 때 모두가 안 "
        "된다고 했습니다. 엔진은 십일 년 동안 멈춰 있었거든요.\n\n"},
    Sample{"Arabic",
           "# ما علّمنا الميناء\n"
           "مساء الخير، وشكرًا لكم على حضوركم في هذه الليلة الباردة. حين اشترينا العبّارة "
           "القديمة قال الجميع إن ذلك مستحيل؛ فالمحرّك لم يدُر منذ أحد عشر عامًا.\n\n"},
    Sample{"Hindi",
           "# बंदरगाह ने हमें क्या सिखाया\n"
           "नमस्ते, इतनी ठंडी रात में आने के लिए धन्यवाद। जब मैंने और मेरे भाई ने पुरानी नाव खरीदी, "
           "सबने कहा कि यह नहीं हो सकता; इंजन ग्यारह साल से बंद पड़ा था।\n\n"},
    Sample{"Thai",
           "# สิ่งที่ท่าเรือสอนเรา\n"
           "สวัสดีครับ ขอบคุณที่มาในคืนที่หนาวขนาดนี้ ตอนที่ผมกับพี่ชายซื้อเรือข้ามฟากลำเก่า "
           "ทุกคนบอกว่าทำไม่ได้หรอก เครื่องยนต์ไม่เดินมาสิบเอ็ดปีแล้ว\n\n"},
};

}  // namespace

std::span<const Sample> samples() { return all; }

std::string text(const Sample& sample, std::size_t size) {
    std::string result;
    result.reserve(size + sample.paragraph.size());
    while (result.size() < size)
        result += sample.paragraph;
    return result;
}

}  // namespace PrompterCore::Samples
