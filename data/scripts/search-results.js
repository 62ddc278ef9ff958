// Takes the first results off a search engine's page: at most six, each a list of its title, its
// address, its snippet and the address that it shows, which is empty where it shows none.
//
// Pages may be huge on purpose, so there are bounds on what is looked at. Ordinary ones stay far
// below them. Only the search for headings has none: it takes a step for each level above each.
(() => {
    const maxResults = 6;
    const maxHeads = 2000;
    const maxNodes = 5000;  // in an element that is asked for the text that is seen
    // Units of UTF-16:
    const maxUnits = 100000;  // in such an element
    const maxHrefUnits = 1000000;  // in all addresses together
    const maxTitle = 1000;
    const maxShown = 1000;
    const maxSnippet = 360;

    // A form can put its fields, by their names, in the place of what an element has, and so can
    // documents. So everything is taken from where all elements have it.
    const member = (type, name, object) => Reflect.get(type.prototype, name, object);
    const call = (type, name, object, ...values) =>
        Reflect.apply(type.prototype[name], object, values);

    const heads = call(Document, 'querySelectorAll', document,
        '#search a h3, #rso a h3, #rso a:has(h3) h3, a[jsname] h3, li.b_algo h2 a, ' +
        'article[data-testid="result"] h2 a, .result__title a, ' +
        '[data-test-id="mainline-result-web"] a h2');

    // The link around a heading, unless one before stands in it: its address has been looked at. So
    // no element is climbed over twice, however many headings there are, and however deep.
    const climbed = new Set();
    const nextLink = h => {
        for (let at = h; at && !climbed.has(at); at = member(Node, 'parentElement', at)) {
            climbed.add(at);
            if (call(Element, 'matches', at, 'a')) return at;
        }
        return null;
    };

    // The link of a drawing has an object for its address, which is no address here.
    const hrefOf = a => a instanceof HTMLAnchorElement ? a.href : '';

    // Engines count the clicks on their results on pages of their own, which lead on.
    const isRedirect = ({hostname, pathname}) =>
        /^\/(goto|url)$/.test(pathname) ||
        pathname === '/ck/a' && /(^|\.)bing\./.test(hostname) ||
        pathname === '/l/' && /(^|\.)duckduckgo\./.test(hostname);

    const leadsToResult = href => {
        if (!/^https?:/.test(href)) return false;
        let url;
        try {
            url = new URL(href);
        } catch {
            return false;
        }
        return isRedirect(url) || !/(^|\.)(google|bing|duckduckgo|ecosia)\./.test(url.hostname);
    };

    // The text that is seen. Where an element has too much in it, the head of all that it holds.
    const text = el => {
        if (!(el instanceof HTMLElement)) return '';
        const walker = call(Document, 'createTreeWalker', document, el,
            NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
        let head = '';
        for (let nodes = 0, node; (node = walker.nextNode()); ++nodes) {
            if (node instanceof Text) head += node.data.slice(0, maxUnits);
            if (nodes >= maxNodes || head.length >= maxUnits) return head.slice(0, maxUnits);
        }
        return member(HTMLElement, 'innerText', el);
    };

    // The head of a text, without half a character at its end.
    const cut = (whole, units) => whole.slice(0, units).replace(/[\uD800-\uDBFF]$/, '');

    // What stands in a box, read once however many results it holds.
    const boxes = new Map();
    const inBox = box => {
        if (!box) return {text: '', shown: ''};
        if (!boxes.has(box)) {
            const cite = text(call(Element, 'querySelector', box, 'cite'));
            boxes.set(box, {text: text(box), shown: cut(cite.split(' ', 1)[0].trim(), maxShown)});
        }
        return boxes.get(box);
    };

    const out = [];
    const seen = new Set();
    let looked = 0;
    let hrefUnits = 0;
    for (const h of heads) {
        if (++looked > maxHeads) break;
        const a = nextLink(h);
        const href = hrefOf(a);
        hrefUnits += href.length;
        if (hrefUnits > maxHrefUnits) break;
        if (seen.has(href) || !leadsToResult(href)) continue;
        seen.add(href);
        const box = call(Element, 'closest', a, 'div.MjjYud, div.g, li.b_algo, article, .result') ||
            member(Node, 'parentElement', a);
        const read = inBox(box);
        const title = cut(text(h).trim(), maxTitle);
        const snippet = read.text.replace(title, '').replace(/\s+/g, ' ').trim();
        out.push([title, href, cut(snippet, maxSnippet), read.shown]);
        if (out.length === maxResults) break;
    }
    return out;
})()
