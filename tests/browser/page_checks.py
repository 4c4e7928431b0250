"""What every page must be: plain, accessible, and as good on a phone as on a desk."""
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

SIZES = {"desk": (1024, 700, False), "phone": (320, 640, True)}

# Contrast of every text with what lies behind it, as the guidelines for accessible pages reckon it; the worst one.
WORST_CONTRAST = """
const channels = colour => colour.match(/[0-9.]+/g).map(Number);
const light = colour => {
    const [r, g, b] = channels(colour).map(c => c / 255).map(c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
};
const behind = element => {
    for (; element; element = element.parentElement) {
        const colour = getComputedStyle(element).backgroundColor;
        if (channels(colour)[3] !== 0) return colour;
    }
    return 'rgb(255, 255, 255)';
};
const ratio = element => {
    const [dark, bright] = [light(getComputedStyle(element).color), light(behind(element))].sort((a, b) => a - b);
    return (bright + 0.05) / (dark + 0.05);
};
const shows = node => node.nodeType === Node.TEXT_NODE && node.data.trim();
return Math.min(...[...document.body.querySelectorAll('*')]
    .filter(element => [...element.childNodes].some(shows)).map(ratio));
"""


def texts(driver, selector):
    return [element.text for element in driver.find_elements(By.CSS_SELECTOR, selector)]


def set_size(driver, size):
    width, height, mobile = SIZES[size]
    driver.execute_cdp_cmd(
        "Emulation.setDeviceMetricsOverride",
        {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": mobile},
    )


def set_scheme(driver, scheme):
    feature = {"name": "prefers-color-scheme", "value": scheme}
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [feature]})


def check_structure(driver, report, page):
    html = driver.find_element(By.TAG_NAME, "html")
    report.equal(f"{page}: its language is told", html.get_dom_attribute("lang"), "en")
    headings = texts(driver, "h1")
    report.check(f"{page}: has one main heading", len(headings) == 1 and headings[0], headings)
    report.check(f"{page}: its title names it", headings and driver.title.startswith(headings[0]), driver.title)
    levels = [int(e.tag_name[1]) for e in driver.find_elements(By.CSS_SELECTOR, "h1, h2, h3, h4, h5, h6")]
    in_order = levels[:1] == [1] and all(b <= a + 1 for a, b in zip(levels, levels[1:]))
    report.check(f"{page}: its headings are in order", in_order, levels)
    marks = {e.aria_role for e in driver.find_elements(By.CSS_SELECTOR, "body > *")}
    report.equal(f"{page}: all of it stands in landmarks", marks, {"banner", "main", "contentinfo"})
    report.equal(f"{page}: has no script", driver.find_elements(By.TAG_NAME, "script"), [])
    unscoped = texts(driver, "th:not([scope])")
    report.equal(f"{page}: its tables' headers say of what", unscoped, [])


def check_look(driver, report, page, pictures):
    for scheme in ("light", "dark"):
        set_scheme(driver, scheme)
        contrast = driver.execute_script(WORST_CONTRAST)
        report.check(f"{page}: its {scheme} colours have contrast", contrast >= 4.5, contrast)
        for size, (width, _, _) in SIZES.items():
            set_size(driver, size)
            driver.save_screenshot(str(pictures / f"{page}-{size}-{scheme}.png"))
            needed = driver.execute_script("return document.documentElement.scrollWidth")
            report.check(f"{page}: fits a {size} in {scheme} colours", needed <= width, needed)
    set_scheme(driver, "light")
    set_size(driver, "desk")


def check_keyboard(driver, report, page):
    """Tab reaches everything that can be used, in the order in which it stands, and shows where it is."""
    usable = driver.find_elements(By.CSS_SELECTOR, "a[href], button, [tabindex='0']")
    if not usable:
        return
    reached, unseen = [], []
    for _ in usable:
        driver.switch_to.active_element.send_keys(Keys.TAB)
        element = driver.switch_to.active_element
        reached.append(element)
        if element.value_of_css_property("outline-style") == "none":
            unseen.append(element.accessible_name)
    report.check(f"{page}: Tab goes through it in order", reached == usable, [e.accessible_name for e in reached])
    report.equal(f"{page}: shows where the focus is", unseen, [])


def check_page(driver, report, page, pictures):
    check_structure(driver, report, page)
    check_look(driver, report, page, pictures)
    check_keyboard(driver, report, page)
    errors = [entry["level"] for entry in driver.get_log("browser")]
    report.equal(f"{page}: the browser finds no fault", errors, [])
