pragma Singleton
import QtQuick
import Brindle.Theme

// Every colour, font and measure of the interface.
ThemeTokens {
    id: root

    // The ground of a day, from -4 (much was freed) to 4 (much was added), and what is written on it.
    function netColor(step: int): color {
        return root.netColors[Math.max(-4, Math.min(step, 4)) + 4];
    }
    function onNetColor(step: int): color {
        return root.text;
    }

    // The width of a frame that holds text, which grows with the text.
    function scaled(width: real): real {
        return Math.round(width * root.textScale);
    }
}
